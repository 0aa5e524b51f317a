#include "frontend/export/word/rtf/rtf_writer.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "backend/strings/dictionary.h"
#include "frontend/export/office/office_values.h"
#include "frontend/export/word/rtf/rtf_table.h"

namespace vexa::frontend {

namespace {

using tables::HorizontalAlign;

/// Of the line of a head or foot to the edge of the paper, points.
constexpr double usualEdge = 35;
constexpr std::size_t bytesOfLine = 64;

void appendHex(std::string& rtf, std::string_view bytes) {
    constexpr std::string_view digits = "0123456789abcdef";
    rtf.reserve(rtf.size() + bytes.size() * 2 + bytes.size() / bytesOfLine);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i % bytesOfLine == 0) rtf += '\n';
        const auto byte = static_cast<unsigned char>(bytes[i]);
        rtf += digits[byte >> 4U];
        rtf += digits[byte & 0xFU];
    }
}

/// A number of four bytes of a PNG's head, which says its width and its height.
std::uint32_t numberAt(std::string_view png, std::size_t place) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4 && place + i < png.size(); ++i) {
        number = number << 8U | static_cast<unsigned char>(png[place + i]);
    }
    return number;
}

void appendProperty(std::string& rtf, std::string_view name, std::string_view value) {
    rtf.append("{\\sp{\\sn ").append(name).append("}{\\sv ");
    appendRtfText(rtf, value);
    rtf += "}}";
}

std::string_view alignWord(HorizontalAlign align) {
    constexpr std::array<std::string_view, 4> words{"", "\\ql", "\\qc", "\\qr"};
    return words[static_cast<std::size_t>(align)];
}

}  // namespace

RtfWriter::RtfWriter(ByteSink sink, std::string title, const std::string& language, const WordPage& page,
                     std::size_t unpackedBytes)
    : sink_(std::move(sink)),
      title_(std::move(title)),
      language_(officeLanguage(language)),
      page_(page),
      styles_(tables_, twipsOf(page.textWidth())),
      written_(unpackedBytes) {}

void RtfWriter::begin(const std::vector<WordParagraph>& head) {
    body_ += "\\sectd";
    appendHead(head);
}

void RtfWriter::beginSection(const std::vector<WordParagraph>& head) {
    body_ += "\\sect\\sectd\\sbkpage";
    isOpen_ = false;
    appendHead(head);
}

void RtfWriter::appendHead(const std::vector<WordParagraph>& head) {
    appendWord(body_, "headery", twipsOf(std::min(usualEdge, page_.margins.top / 2)));
    appendWord(body_, "footery", twipsOf(std::min(usualEdge, page_.margins.bottom / 2)));
    if (page_.isLandscape()) body_ += "\\lndscpsxn";
    body_ += '\n';
    if (!head.empty()) {
        body_ += "{\\header ";
        for (const WordParagraph& line : head) {
            openParagraph(line);
            appendRuns(line);
        }
        body_ += "\\par}\n";
        isOpen_ = false;
    }
    body_ += "{\\footer \\pard\\plain" + styles_.footer();
    body_ += " {\\field{\\*\\fldinst  PAGE }{\\fldrslt 1}}\\par}\n";
}

void RtfWriter::endParagraph() {
    if (std::exchange(isOpen_, false)) body_ += "\\par\n";
}

void RtfWriter::openParagraph(const WordParagraph& paragraph) {
    endParagraph();
    written_.take(body_);
    std::string words = styles_.role(paragraph.role, paragraph.level);
    if (paragraph.keepsWithNext) words += "\\keepn";
    if (paragraph.breaksPage) words += "\\pagebb";
    const bool isTurned = isRightToLeft(paragraph);
    words.append(alignWord(paragraph.align)).append(styles_.own(paragraph.own));
    body_.append("\\pard\\plain").append(words);
    if (isTurned) body_.append("\\rtlpar\\qr").append(turnedWords(words));
    body_ += ' ';
    isOpen_ = true;
}

void RtfWriter::appendRuns(const WordParagraph& paragraph) {
    for (const WordRun& run : paragraph.runs) {
        if (run.text.empty()) continue;
        if (run.raised) body_ += "{\\super ";
        if (run.bold) body_ += "{\\b ";
        appendRtfText(body_, run.text);
        if (run.bold) body_ += '}';
        if (run.raised) body_ += '}';
    }
}

void RtfWriter::paragraph(const WordParagraph& paragraph) {
    openParagraph(paragraph);
    const std::string name = bookmarkName(paragraph.bookmark);
    if (paragraph.bookmark != 0) body_ += "{\\*\\bkmkstart " + name + "}";
    appendRuns(paragraph);
    if (paragraph.bookmark != 0) body_ += "{\\*\\bkmkend " + name + "}";
}

void RtfWriter::contents(const std::vector<WordEntry>& entries) {
    endParagraph();
    body_ += "\\pard\\plain" + styles_.contentsHeading() + " ";
    appendRtfText(body_, translated("Contents"_text.key()));
    body_ += "\\par\n";
    bool isFirst = true;
    for (const WordEntry& entry : entries) {
        if (!isFirst) body_ += "\\par\n";
        body_ += "\\pard\\plain" + styles_.contentsEntry(entry.level) + " ";
        if (std::exchange(isFirst, false)) {
            // Only the reader's program knows the pages: the field is marked as one to bring up to date.
            body_ += "{\\field\\flddirty{\\*\\fldinst  TOC \\\\o \"1-3\" \\\\h \\\\z \\\\u }{\\fldrslt ";
        }
        body_ +=
            "{\\field{\\*\\fldinst  HYPERLINK \\\\l \"" + bookmarkName(entry.bookmark) + "\" }{\\fldrslt ";
        appendRtfText(body_, entry.text);
        body_ += "}}";
    }
    body_ += "}}";
    isOpen_ = true;
}

void RtfWriter::table(const TablePart& part) {
    endParagraph();
    appendRtfTable(body_, part, tables_, styles_, [this](std::string& rtf) { written_.take(rtf); });
}

void RtfWriter::picture(const WordParagraph& place, const WordPicture& picture) {
    openParagraph(place);
    const std::string& png = picture.picture.png;
    body_ += "{\\pict{\\*\\picprop";
    appendProperty(body_, "wzDescription", picture.picture.alternative);
    appendProperty(body_, "wzName", picture.name);
    body_ += "}\\pngblip";
    appendWord(body_, "picw", numberAt(png, 16));
    appendWord(body_, "pich", numberAt(png, 20));
    appendWord(body_, "picwgoal", twipsOf(picture.size.width));
    appendWord(body_, "pichgoal", twipsOf(picture.size.height));
    appendHex(body_, png);
    body_ += "}";
}

std::string RtfWriter::beginning() const {
    std::string rtf = "{\\rtf1\\ansi\\ansicpg1252\\uc1\\deff0";
    const int language = languageNumber(language_);
    appendWord(rtf, "deflang", language);
    appendWord(rtf, "deflangfe", language);
    return rtf + "\n";
}

PackageResult RtfWriter::finish() {
    endParagraph();
    body_ += "}\n";
    // Naming the styles may name further fonts.
    const std::string sheet = styles_.sheet();
    std::string rtf = beginning() + tables_.text() + sheet;
    rtf.append("{\\*\\generator ").append("Vexa Output").append(";}\n{\\info{\\title ");
    appendRtfText(rtf, title_);
    rtf += "}}\n";
    appendWord(rtf, "paperw", twipsOf(page_.paper.width));
    appendWord(rtf, "paperh", twipsOf(page_.paper.height));
    appendWord(rtf, "margl", twipsOf(page_.margins.left));
    appendWord(rtf, "margr", twipsOf(page_.margins.right));
    appendWord(rtf, "margt", twipsOf(page_.margins.top));
    appendWord(rtf, "margb", twipsOf(page_.margins.bottom));
    rtf += page_.isLandscape() ? "\\landscape\\widowctrl\n" : "\\widowctrl\n";
    PackageResult result = sink_(rtf);
    if (result) result = written_.release(sink_);
    return result ? sink_(body_) : result;
}

}  // namespace vexa::frontend
