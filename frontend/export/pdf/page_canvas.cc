#include "frontend/export/pdf/page_canvas.h"

#include <array>
#include <cmath>
#include <utility>

namespace vexa::frontend::pdf {

namespace {

using tables::BorderLine;
using tables::Color;
using tables::LineStyle;

void appendPoint(std::string& text, double x, double y) {
    appendNumber(text, x);
    text += ' ';
    appendNumber(text, y);
    text += ' ';
}

/// A factor of a scale, with six decimals.
void appendFactor(std::string& text, double factor) {
    const auto millionths = std::llround(factor * 1e6);
    std::string rest = std::to_string(millionths % 1'000'000);
    rest.insert(0, 6 - rest.size(), '0');
    text += std::to_string(millionths / 1'000'000) + "." + rest + " ";
}

/// A part of a colour, from 0 to 1 with three decimals.
void appendPart(std::string& text, std::uint32_t part) {
    const std::uint32_t thousandths = (part * 1000 + 127) / 255;
    if (thousandths == 0 || thousandths == 1000) {
        text += thousandths == 0 ? "0 " : "1 ";
        return;
    }
    text += '.';
    text += static_cast<char>('0' + thousandths / 100);
    text += static_cast<char>('0' + thousandths / 10 % 10);
    text += static_cast<char>('0' + thousandths % 10);
    text += ' ';
}

void appendColor(std::string& text, std::uint32_t rgb) {
    appendPart(text, rgb >> 16U & 0xFFU);
    appendPart(text, rgb >> 8U & 0xFFU);
    appendPart(text, rgb & 0xFFU);
}

}  // namespace

double thicknessOf(LineStyle style) {
    constexpr std::array<double, 7> points{0, 0.5, 1, 2, 3, 0.5, 0.5};
    return points[static_cast<std::size_t>(style)];
}

void PageCanvas::beginContent(std::string_view type, std::size_t number) {
    content_ += '/';
    content_ += type;
    content_ += "<</MCID ";
    content_ += std::to_string(number);
    content_ += ">>BDC\n";
}

void PageCanvas::beginArtifact(std::string_view kind) {
    content_ += "/Artifact<</Type/";
    content_ += kind;
    content_ += ">>BDC\n";
}

void PageCanvas::setFill(Color color) {
    if (fillColor_ == color.rgb) return;
    fillColor_ = color.rgb;
    appendColor(content_, color.rgb);
    content_ += "rg\n";
}

void PageCanvas::setStroke(Color color) {
    if (strokeColor_ == color.rgb) return;
    strokeColor_ = color.rgb;
    appendColor(content_, color.rgb);
    content_ += "RG\n";
}

void PageCanvas::fill(const Box& box, Color color) {
    setFill(color);
    appendPoint(content_, box.left, pageHeight_ - box.bottom());
    appendPoint(content_, box.width, box.height);
    content_ += "re f\n";
}

void PageCanvas::strokeLine(double fromX, double fromY, double toX, double toY, double width,
                            std::string_view dashes) {
    appendNumber(content_, width);
    content_ += " w ";
    if (!dashes.empty()) content_ += "0 J ";
    content_ += dashes;
    appendPoint(content_, fromX, pageHeight_ - fromY);
    content_ += "m ";
    appendPoint(content_, toX, pageHeight_ - toY);
    content_ += dashes.empty() ? "l S\n" : "l S[]0 d 2 J\n";
}

void PageCanvas::line(double fromX, double fromY, double toX, double toY, const BorderLine& style) {
    setStroke(style.color);
    const double thickness = thicknessOf(style.style);
    switch (style.style) {
        case LineStyle::none:
            return;
        case LineStyle::twofold: {
            const double aside = thickness / 3;
            const double asideX = fromX == toX ? aside : 0;
            const double asideY = fromX == toX ? 0 : aside;
            strokeLine(fromX - asideX, fromY - asideY, toX - asideX, toY - asideY, aside, {});
            strokeLine(fromX + asideX, fromY + asideY, toX + asideX, toY + asideY, aside, {});
            return;
        }
        case LineStyle::dashed:
            return strokeLine(fromX, fromY, toX, toY, thickness, "[3 2]0 d ");
        case LineStyle::dotted:
            return strokeLine(fromX, fromY, toX, toY, thickness, "[.5 1.5]0 d ");
        case LineStyle::thin:
        case LineStyle::medium:
        case LineStyle::thick:
            return strokeLine(fromX, fromY, toX, toY, thickness, {});
    }
}

void PageCanvas::showRun(const ShapedRun& run, double size, double x, double y, bool isFirst) {
    const std::string& name =
        run.sheet == nullptr ? fonts_.at(run.font.id).embeddedName() : run.sheet->name();
    if (font_ != &name || size_ != size) {
        content_ += "/" + name + " ";
        appendNumber(content_, size);
        content_ += " Tf ";
        font_ = &name;
        size_ = size;
    }
    if (isFirst && run.font.slant == 0) {
        appendPoint(content_, x, y);
        content_ += "Td ";
    } else {
        content_ += "1 0 ";
        appendPoint(content_, run.font.slant, 1);
        appendPoint(content_, x, y);
        content_ += "Tm ";
    }
    if (run.font.isThickened) {
        content_ += "2 Tr ";
        appendNumber(content_, size / 30);
        content_ += " w ";
    }
    content_ += run.operators;
    if (run.font.isThickened) content_ += "0 Tr ";
}

void PageCanvas::text(const ShapedLine& line, double size, Color color, double x, double baseline) {
    if (line.runs.empty()) return;
    setFill(color);
    for (const ShapedRun& run : line.runs) {
        if (run.font.isThickened) setStroke(color);
    }
    content_ += "BT ";
    const double y = pageHeight_ - baseline;
    for (const ShapedRun& run : line.runs) showRun(run, size, x + run.begin, y, &run == line.runs.data());
    content_ += "ET\n";
    for (const MissingBox& box : line.missing) {
        setStroke(color);
        content_ += ".5 w ";
        appendPoint(content_, x + box.begin + 0.1 * box.width, y);
        appendPoint(content_, 0.8 * box.width, 0.7 * size);
        content_ += "re S\n";
    }
}

void PageCanvas::picture(const std::string& name, double width, double height, const Box& box) {
    content_ += "q ";
    appendFactor(content_, box.width / width);
    content_ += "0 0 ";
    appendFactor(content_, box.height / height);
    appendPoint(content_, box.left, pageHeight_ - box.bottom());
    content_ += "cm /" + name + " Do Q\n";
}

std::string PageCanvas::take() {
    fillColor_ = 0;
    strokeColor_ = 0;
    font_ = nullptr;
    size_ = 0;
    // Lines go on over the corners that they meet in.
    return "2 J\n" + std::exchange(content_, {});
}

}  // namespace vexa::frontend::pdf
