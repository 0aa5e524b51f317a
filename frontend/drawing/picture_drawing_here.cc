#include "frontend/drawing/picture_drawing_here.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "backend/strings/dictionary.h"
#include "backend/text/utf8.h"
#include "frontend/drawing/bitmap.h"
#include "frontend/drawing/bounded_work.h"
#include "frontend/drawing/drawing_limits.h"
#include "frontend/drawing/emf_file.h"
#include "frontend/drawing/eps_file.h"
#include "frontend/drawing/general_fonts.h"
#include "frontend/drawing/picture_style.h"
#include "frontend/package/xml_escapes.h"

namespace vexa::frontend {

namespace {

std::string makeFile(const Picture& picture, const DrawingOrder& order, std::string& reason) {
    if (order.form == DrawnForm::eps) return epsFile(picture, order, reason);
    if (order.form == DrawnForm::emf) return emfFile(picture, order, reason);
    const bool transparent = order.form == DrawnForm::png && order.depth == DrawnDepth::true32Bit;
    Bitmap bitmap;
    if (!drawBitmap(picture, order.width, order.height, transparent, bitmap, reason)) return {};
    return bitmapFile(bitmap, order);
}

/// What went wrong goes through the pipe as well: the first byte tells which of both it is.
std::string fileOrReason(const Picture& picture, const DrawingOrder& order) {
    std::string reason;
    std::string file = makeFile(picture, order, reason);
    return file.empty() ? "-" + reason : "+" + file;
}

/// Waits for a file or a reason.
DrawnPicture finishDrawing(WorkApart& work, unsigned int seconds) {
    DrawnPicture drawn;
    switch (finishWell(work, drawn.bytes)) {
        case WorkEnd::done:
            break;
        case WorkEnd::tooLong:
            return {{}, composed("Drawing it took longer than ^1 seconds."_text, {std::to_string(seconds)})};
        case WorkEnd::crashed:
            return {{}, translated("Drawing it took more memory than a picture may take, or failed."_text)};
        case WorkEnd::noProcess:
            return {{}, translated("The system gave no process to draw it in."_text)};
    }
    const bool isFile = drawn.bytes.front() == '+';
    drawn.bytes.erase(0, 1);
    if (!isFile) {
        drawn.reason = drawn.bytes.empty() ? translated("It cannot be drawn."_text) : drawn.bytes;
        drawn.bytes.clear();
    }
    return drawn;
}

/// `text` in lines of at most `most` characters, cut at blanks where there are some.
std::vector<std::string> linesOf(std::string_view text, std::size_t most) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        std::size_t length = 0;
        std::size_t blank = 0;
        for (std::size_t count = 0; length < text.size() && count < most && text[length] != '\n'; ++count) {
            if (text[length] == ' ') blank = length;
            length += decodeUtf8(text.substr(length)).length;
        }
        if (length < text.size() && text[length] != '\n' && blank > 0) length = blank;
        lines.emplace_back(text.substr(0, length));
        text.remove_prefix(
            std::min(text.size(), length + (length < text.size() && text[length] <= ' ' ? 1U : 0U)));
    }
    return lines;
}

/// A frame with the text in it, in pixels of the size that the picture would have had.
Picture placeholder(const std::string& alternative, const DrawingOrder& order) {
    constexpr double fontSize = 12;
    constexpr double lineHeight = 16;
    constexpr double inset = 6;
    Picture picture{PictureForm::svg, {}, order.width, order.height};
    const auto wide = static_cast<long>(std::max(1.0, std::round(order.width / 0.75)));
    const auto high = static_cast<long>(std::max(1.0, std::round(order.height / 0.75)));
    std::string& svg = picture.bytes;
    svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " + std::to_string(wide) + " " +
          std::to_string(high) + "\"><rect x=\"0.5\" y=\"0.5\" width=\"" +
          std::to_string(std::max(wide - 1, 1L)) + "\" height=\"" + std::to_string(std::max(high - 1, 1L)) +
          "\" fill=\"#f4f4f4\" stroke=\"#808080\"/><g font-family=\"sans-serif\" font-size=\"12\" "
          "fill=\"#404040\">";
    const double most = (static_cast<double>(wide) - 2 * inset) / (fontSize * 0.6);
    double y = inset + fontSize;
    for (const std::string& line : linesOf(alternative, static_cast<std::size_t>(std::max(most, 1.0)))) {
        if (y > static_cast<double>(high)) break;
        svg += "<text x=\"6\" y=\"" + std::to_string(static_cast<long>(y)) + "\">";
        appendXmlText(svg, line, XmlEscapes::replacing);
        svg += "</text>";
        y += lineHeight;
    }
    svg += "</g></svg>";
    return picture;
}

/// A picture that is too large has a placeholder of a size that suits it.
DrawingOrder placeholderOrder(const DrawingOrder& order) {
    constexpr double usual = 225;
    DrawingOrder other = order;
    const double larger = std::max(order.width, order.height);
    if (larger > 10 * usual) {
        other.width *= 10 * usual / larger;
        other.height *= 10 * usual / larger;
    }
    return other;
}

WorkLimits limitsOf(const DrawingOrder& order, const Picture& picture) {
    const bool isDrawnInPixels =
        order.form != DrawnForm::emf && (order.form != DrawnForm::eps || order.preview);
    const double pixels = order.width * order.height * pixelsPerPoint * pixelsPerPoint;
    WorkLimits limits = limitsForPicture(picture, isDrawnInPixels ? pixels : 0, order.sharesLittle);
    limits.seconds = order.seconds;
    return limits;
}

class DrawingHere : public PendingDrawing {
  public:
    DrawingHere(const Picture& picture, std::string rules, std::string alternative, const DrawingOrder& order)
        : picture_(picture),
          rules_(std::move(rules)),
          alternative_(std::move(alternative)),
          order_(order),
          work_([this] { return draw(); }, limitsOf(order, picture)) {}

    DrawnPicture finish() override {
        DrawnPicture drawn = finishDrawing(work_, order_.seconds);
        if (drawn.reason.empty()) return drawn;
        const DrawingOrder order = placeholderOrder(order_);
        const Picture instead = placeholder(alternative_, order);
        WorkApart work([&] { return fileOrReason(instead, order); }, limitsOf(order, instead));
        drawn.bytes = finishDrawing(work, order.seconds).bytes;
        return drawn;
    }

  private:
    [[nodiscard]] std::string draw() const {
        if (picture_.form != PictureForm::svg || rules_.empty()) return fileOrReason(picture_, order_);
        return fileOrReason(
            {picture_.form, applyRules(picture_.bytes, rules_), picture_.width, picture_.height}, order_);
    }

    const Picture& picture_;
    std::string rules_;
    std::string alternative_;
    DrawingOrder order_;
    WorkApart work_;
};

}  // namespace

}  // namespace vexa::frontend

void vexaBeginDrawing(const vexa::frontend::Picture& picture, std::string rules, std::string alternative,
                      const vexa::frontend::DrawingOrder& order,
                      std::unique_ptr<vexa::frontend::PendingDrawing>& drawing) {
    // What fonts there are is read once, not by each process that draws.
    vexa::frontend::settleGeneralFonts();
    drawing = std::make_unique<vexa::frontend::DrawingHere>(picture, std::move(rules), std::move(alternative),
                                                            order);
}
