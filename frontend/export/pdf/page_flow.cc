#include "frontend/export/pdf/page_flow.h"

#include <algorithm>

namespace vexa::frontend::pdf {

namespace {

using tables::Color;
using tables::HorizontalAlign;
using tables::LineStyle;

constexpr std::size_t pagesOfNode = 64;
constexpr double outerSpace = 24;  // between the page's edge and its title
constexpr double titleGap = 10;    // between the title and the page's content
constexpr Color fadedColor{0x555555};

/// Longer texts are laid out piece by piece.
constexpr std::size_t longPiece = std::size_t{64} << 10U;

/// Takes the beginning of a text away: all of one that is not long; else up to the end of a line that is not
/// empty, which is taken too, or up to a blank or any character where no line ends for long.
std::string_view takePiece(std::string_view& text) {
    const auto take = [&text](std::size_t length, std::size_t behind) {
        const std::string_view piece = text.substr(0, length);
        text.remove_prefix(std::min(length + behind, text.size()));
        return piece;
    };
    if (text.size() <= 2 * longPiece) return take(text.size(), 0);
    for (std::size_t end = text.find('\n', longPiece); end < 2 * longPiece; end = text.find('\n', end + 1)) {
        const std::size_t begin = text[end - 1] == '\r' ? end - 1 : end;
        if (text[begin - 1] != '\n' && text[begin - 1] != '\r') return take(begin, end + 1 - begin);
    }
    if (const std::size_t blank = text.find(' ', longPiece); blank < 2 * longPiece) return take(blank, 1);
    std::size_t end = longPiece;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) --end;
    return take(end == 0 ? longPiece : end, 0);
}

}  // namespace

PageFlow::PageFlow(PdfFile& file, StructureTree& structure, TextShaper& shaper, PdfFonts& fonts,
                   PdfObject fontsObject)
    : file_(file),
      structure_(structure),
      shaper_(shaper),
      canvas_(fonts, page_.height),
      fontsObject_(fontsObject),
      pagesRoot_(file.reserve()) {}

double PageFlow::bodyTop() const { return std::max(margins_.top, outerSpace + titleHeight_ + titleGap); }

double PageFlow::waitingHeight() const {
    double height = 0;
    for (const Waiting& each : waiting_) height += each.height;
    return height;
}

double PageFlow::rest() const {
    const double bottom = page_.height - margins_.bottom;
    return (isOpen_ ? bottom - y_ - (isEmpty_ ? 0 : space_) : bodyHeight()) - waitingHeight();
}

void PageFlow::reserve(double height) {
    if (isOpen_ && !isEmpty_ && rest() < height - 0.01) endPage();
    if (!isOpen_) beginPage();
    // What a heading writes asks for room itself; none of them waits any more by then.
    const std::vector<Waiting> waiting = std::exchange(waiting_, {});
    for (const Waiting& each : waiting) each.draw();
    if (!isEmpty_) y_ += space_;
    space_ = 0;
    isEmpty_ = false;
}

void PageFlow::breakPage() {
    if (!waiting_.empty()) writeWaiting();
    if (isOpen_ && !isEmpty_) endPage();
}

void PageFlow::keepWithNext(double height, std::function<void()> draw) {
    waiting_.push_back({height, std::move(draw)});
}

void PageFlow::beginPage() {
    structure_.beginPage(tagged_, file_.reserve());
    isOpen_ = true;
    isEmpty_ = true;
    ++pages_;
    if (!titles_.empty()) writeTitles();
    y_ = bodyTop();
    space_ = 0;
}

void PageFlow::addPageTitle(const ParagraphLook& look, const std::string& text, bool follows) {
    if (!follows) titles_.clear();
    titles_.push_back({look, text, false});
    titleHeight_ = 0;
    for (const PageTitle& each : titles_) titleHeight_ += heightOf(each.look, each.text);
    // A title leaves most of the page to what it is the title of.
    titleHeight_ = std::min(titleHeight_, page_.height / 3);
}

bool PageFlow::hasUnseenTitle() const {
    return std::any_of(titles_.begin(), titles_.end(), [](const PageTitle& each) { return !each.wasShown; });
}

void PageFlow::writeTitles() {
    const double bottom = bodyTop() - titleGap;
    y_ = bottom - titleHeight_;
    for (PageTitle& each : titles_) {
        const ShapedText text = shaper_.wrapped(shaper_.styleOf(each.look.style), each.text, width());
        StructureElement element;
        if (each.wasShown) {
            canvas_.beginArtifact("Pagination/Subtype/Header");
        } else {
            element = structure_.open("P", structure_.document());
            canvas_.beginContent("P", structure_.addContent(element, tagged_));
        }
        for (const ShapedLine& line : text.lines) {
            if (y_ + line.height() > bottom + 0.1) break;
            writeLine(each.look, line);
        }
        canvas_.end();
        if (!each.wasShown) structure_.close(element);
        each.wasShown = true;
    }
    canvas_.beginArtifact("Pagination/Subtype/Header");
    canvas_.line(left(), bottom + 3, left() + width(), bottom + 3, {LineStyle::thin, Color{0xBBBBBB}});
    canvas_.end();
}

void PageFlow::writePageNumber() {
    const TextStyleId style = shaper_.styleOf({"sans-serif", 8, false, false});
    const ShapedText& text = shaper_.lines(style, std::to_string(pages_));
    canvas_.beginArtifact("Pagination/Subtype/Footer");
    canvas_.text(text.lines[0], 8, fadedColor, (page_.width - text.width) / 2,
                 page_.height - margins_.bottom / 2);
    canvas_.end();
}

void PageFlow::endPage() {
    writePageNumber();
    structure_.endPage(tagged_);
    if ((pages_ - 1) % pagesOfNode == 0) nodes_.emplace_back(file_.reserve(), std::string());
    appendReference(nodes_.back().second, tagged_.number);
    nodes_.back().second += ' ';
    std::string page = "<</Type/Page/Parent ";
    appendReference(page, nodes_.back().first);
    page += "/MediaBox[0 0 ";
    appendNumber(page, page_.width);
    page += ' ';
    appendNumber(page, page_.height);
    page += "]/Resources<</Font ";
    appendReference(page, fontsObject_);
    if (!pictures_.empty()) page += "/XObject<<" + pictures_ + ">>";
    page += ">>/StructParents " + std::to_string(tagged_.key) + "/Tabs/S/Contents ";
    appendReference(page, file_.addStream("", canvas_.take()));
    if (!annotations_.empty()) page += "/Annots[" + annotations_ + "]";
    file_.write(tagged_.number, page + ">>");
    annotations_.clear();
    pictures_.clear();
    isOpen_ = false;
}

PdfObject PageFlow::finish() {
    if (!waiting_.empty() || pages_ == 0) writeWaiting();
    if (isOpen_) endPage();
    std::string kids;
    for (auto& [node, pages] : nodes_) {
        const auto count = static_cast<std::size_t>(std::count(pages.begin(), pages.end(), 'R'));
        std::string body = "<</Type/Pages/Parent ";
        appendReference(body, pagesRoot_);
        body.append("/Count ").append(std::to_string(count)).append("/Kids[").append(pages).append("]>>");
        file_.write(node, body);
        appendReference(kids, node);
        kids += ' ';
    }
    file_.write(pagesRoot_, "<</Type/Pages/Count " + std::to_string(pages_) + "/Kids[" + kids + "]>>");
    return pagesRoot_;
}

double PageFlow::heightOf(const ParagraphLook& look, std::string_view text) {
    return shaper_.wrapped(shaper_.styleOf(look.style), takePiece(text), width() - look.indent).height;
}

void PageFlow::writeLine(const ParagraphLook& look, const ShapedLine& line) {
    const double within = look.width > 0 ? std::min(look.width, width()) : width();
    const double free = std::max(0.0, within - look.indent - line.width);
    const bool isRight = look.align == HorizontalAlign::right;
    const double x = left() + look.indent +
                     (isRight                                 ? free
                      : look.align == HorizontalAlign::center ? free / 2
                                                              : 0);
    canvas_.text(line, look.style.size, look.color, x, y_ + line.ascent);
    if (look.underline) {
        const double below = y_ + line.ascent + look.style.size * 0.12;
        canvas_.line(x, below, x + line.width, below, {LineStyle::thin, look.color});
    }
    y_ += line.height();
}

void PageFlow::write(const ParagraphLook& look, std::string_view text, StructureElement* element) {
    bool isFirst = true;
    do {
        writePiece(look, takePiece(text), element, isFirst);
        isFirst = false;
    } while (!text.empty());
}

void PageFlow::writePiece(const ParagraphLook& look, std::string_view text, StructureElement* element,
                          bool isFirst) {
    // A copy, since a page that begins within the text shapes its title and number.
    const ShapedText shaped = shaper_.wrapped(shaper_.styleOf(look.style), text, width() - look.indent);
    for (std::size_t i = 0; i < shaped.lines.size();) {
        // The first two lines stand together.
        const bool isWithNext = isFirst && i == 0 && shaped.lines.size() > 1;
        reserve(shaped.lines[i].height() + (isWithNext ? shaped.lines[1].height() : 0));
        std::size_t end = i + 1;
        double height = shaped.lines[i].height();
        while (end < shaped.lines.size() && height + shaped.lines[end].height() <= rest() + 0.01) {
            height += shaped.lines[end++].height();
        }
        if (look.background) fillGround(look, height);
        if (element != nullptr) {
            beginContent(*element);
        } else {
            canvas_.beginArtifact("Layout");
        }
        for (; i < end; ++i) writeLine(look, shaped.lines[i]);
        canvas_.end();
    }
}

void PageFlow::fillGround(const ParagraphLook& look, double height) {
    constexpr double beyond = 3;
    const double within = look.width > 0 ? std::min(look.width, width()) : width();
    canvas_.beginArtifact("Layout");
    canvas_.fill({left() + look.indent - beyond, y_, within - look.indent + 2 * beyond, height},
                 *look.background);
    canvas_.end();
}

void PageFlow::beginContent(StructureElement& element) {
    canvas_.beginContent(element.type, structure_.addContent(element, tagged_));
}

PdfObject PageFlow::addLink(const Box& box, StructureElement& element) {
    const PdfObject number = file_.reserve();
    appendReference(annotations_, number);
    annotations_ += ' ';
    std::string entries = "<</Type/Annot/Subtype/Link/F 4/Border[0 0 0]/Rect" + rectangle(box) +
                          "/StructParent " +
                          std::to_string(structure_.addAnnotation(element, number, tagged_));
    links_.push_back({number, std::move(entries)});
    return number;
}

std::string PageFlow::rectangle(const Box& box) const {
    std::string text = "[";
    for (const double each : {box.left, page_.height - box.bottom(), box.right(), page_.height - box.top}) {
        appendNumber(text, each);
        text += ' ';
    }
    text.back() = ']';
    return text;
}

void PageFlow::setLinkTarget(PdfObject link, const PagePlace& target, const std::string& text) {
    const auto found = std::find_if(links_.rbegin(), links_.rend(),
                                    [link](const PendingLink& each) { return each.number == link; });
    if (found == links_.rend()) return;
    std::string body = std::move(found->entries);
    body += "/Contents";
    appendTextString(body, text);
    body += "/Dest" + destination(target) + ">>";
    file_.write(link, body);
    links_.erase(std::next(found).base());
}

std::string PageFlow::destination(const PagePlace& place) const {
    std::string text = "[";
    appendReference(text, place.page);
    text += "/XYZ ";
    appendNumber(text, place.x);
    text += ' ';
    appendNumber(text, page_.height - place.y);
    return text + " null]";
}

void PageFlow::usePicture(const std::string& name, PdfObject object) {
    pictures_ += "/" + name + " ";
    appendReference(pictures_, object);
}

}  // namespace vexa::frontend::pdf
