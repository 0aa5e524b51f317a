#include "frontend/export/slides/slide_text.h"

#include <algorithm>

#include "backend/text/utf8.h"
#include "frontend/export/font_widths.h"
#include "frontend/export/office/office_values.h"

namespace vexa::frontend {

namespace {

using tables::HorizontalAlign;

void writeFont(XmlWriter& xml, const std::string& font) {
    const std::string family = officeFont(font);
    for (const std::string_view element : {"a:latin", "a:ea", "a:cs"}) {
        xml.begin(element).attribute("typeface", family).end();
    }
}

void writeFlag(XmlWriter& xml, std::string_view name, const std::optional<bool>& value) {
    if (value) xml.attribute(name, *value ? "1" : "0");
}

std::string_view alignmentOf(HorizontalAlign align) {
    switch (align) {
        case HorizontalAlign::left:
            return "l";
        case HorizontalAlign::center:
            return "ctr";
        case HorizontalAlign::right:
            return "r";
        case HorizontalAlign::mixed:
            break;
    }
    return {};
}

/// Where the line that begins at `begin` ends, and the next one begins.
struct Line {
    std::size_t end = 0;
    std::size_t next = 0;
};

class LineBreaker {
  public:
    LineBreaker(std::string_view text, const FontWidths& font, double width)
        : text_(text), font_(font), width_(width) {}

    /// Takes time in proportion to the line. A word that is wider than the line is broken somewhere.
    [[nodiscard]] Line lineFrom(std::size_t begin) const {
        std::size_t at = begin;
        std::size_t blank = begin;
        double taken = 0;
        while (at < text_.size()) {
            if (text_[at] == '\n') return {at, at + 1};
            if (text_[at] == ' ' || text_[at] == '\t') blank = at;
            const std::size_t length = decodeUtf8(text_.substr(at)).length;
            taken += font_.width(text_.substr(at, length));
            if (taken > width_ && at > begin) {
                // A blank between two lines belongs to neither.
                if (blank > begin) return {blank, blank + 1};
                return {at, at};
            }
            at += length;
        }
        return {at, at};
    }

  private:
    std::string_view text_;
    const FontWidths& font_;
    double width_;
};

}  // namespace

std::string_view withoutReturn(std::string_view line) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

bool isTooMuch(XmlWriter& xml, std::string_view text) {
    const std::size_t bytes = xml.bytes();
    if (bytes + text.size() <= mostSlideBytes) return false;
    if (bytes <= mostSlideBytes) xml.raw(std::string(mostSlideBytes + 1 - bytes, ' '));
    return true;
}

SlideRunStyle runStyleOf(const tables::AreaLook& look, double scale) {
    SlideRunStyle style;
    style.style.font = look.font;
    style.style.size = look.size * scale;
    style.style.bold = look.bold;
    style.style.italic = look.italic;
    style.style.underline = look.underline;
    style.style.color = look.color;
    return style;
}

void SlideText::properties(XmlWriter& xml, std::string_view element, const SlideRunStyle& run) const {
    const tables::CellStyle& style = run.style;
    xml.begin(element).attribute("lang", language_);
    if (style.size) xml.attribute("sz", hundredthsOf(*style.size));
    writeFlag(xml, "b", style.bold);
    writeFlag(xml, "i", style.italic);
    if (style.underline) xml.attribute("u", *style.underline ? "sng" : "none");
    if (run.raised) xml.attribute("baseline", "30000");
    if (style.color) {
        xml.begin("a:solidFill").begin("a:srgbClr").attribute("val", officeColor(*style.color)).end();
        xml.end();
    }
    if (!style.font.empty()) writeFont(xml, style.font);
    xml.end();
}

void SlideText::run(XmlWriter& xml, const SlideRun& run) const {
    std::string_view text = run.text;
    for (;;) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        if (isTooMuch(xml, text.substr(0, end))) return;
        if (end > 0) {
            xml.begin("a:r");
            properties(xml, "a:rPr", run.style);
            xml.element("a:t", withoutReturn(text.substr(0, end))).end();
        }
        if (end == text.size()) return;
        xml.begin("a:br");
        properties(xml, "a:rPr", run.style);
        xml.end();
        text.remove_prefix(end + 1);
    }
}

void SlideText::paragraph(XmlWriter& xml, const SlideParagraph& paragraph, const SlideRunStyle& empty) const {
    xml.begin("a:p").begin("a:pPr");
    if (paragraph.level > 0) xml.attribute("lvl", std::min(paragraph.level, 8));
    const std::string_view align = alignmentOf(paragraph.align);
    if (!align.empty()) xml.attribute("algn", align);
    if (paragraph.heads) {
        xml.begin("a:spcBef").begin("a:spcPts").attribute("val", "600").end();
        xml.end();
    }
    xml.end();
    bool hasText = false;
    for (const SlideRun& each : paragraph.runs) {
        run(xml, each);
        hasText = hasText || !each.text.empty();
    }
    if (!hasText)
        properties(xml, "a:endParaRPr", paragraph.runs.empty() ? empty : paragraph.runs.front().style);
    xml.end();
}

std::vector<std::string_view> cutText(std::string_view text, std::string_view font, double size, bool bold,
                                      const TextRoom& room) {
    const FontWidths widths(font, size, bold);
    const LineBreaker breaker(text, widths, std::max(room.width, size));
    std::vector<std::string_view> pieces;
    std::size_t begin = 0;
    std::size_t at = 0;
    std::size_t lines = 0;
    std::size_t end = 0;
    while (at < text.size()) {
        const std::size_t most = std::max<std::size_t>(pieces.empty() ? room.first : room.lines, 1);
        const Line line = breaker.lineFrom(at);
        if (lines == most) {
            pieces.push_back(text.substr(begin, end - begin));
            begin = at;
            lines = 0;
        }
        ++lines;
        end = line.end;
        at = line.next;
    }
    pieces.push_back(text.substr(begin, end - begin));
    return pieces;
}

}  // namespace vexa::frontend
