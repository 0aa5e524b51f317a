#include "frontend/drawing/vector_state.h"

#include <algorithm>
#include <cmath>

namespace vexa::frontend {

namespace {

constexpr double opaque = 0.998;

/// Letters of scripts that are written from the right.
bool isFromTheRight(char32_t code) {
    return (code >= 0x590 && code <= 0x8FF) || (code >= 0xFB1D && code <= 0xFDFF) ||
           (code >= 0xFE70 && code <= 0xFEFF) || (code >= 0x10800 && code <= 0x10FFF) ||
           (code >= 0x1E800 && code <= 0x1EFFF);
}

double numberAt(QPDFObjectHandle numbers, int index, double usual) {
    if (!numbers.isArray() || index >= numbers.getArrayNItems()) return usual;
    QPDFObjectHandle found = numbers.getArrayItem(index);
    return found.isNumber() ? found.getNumericValue() : usual;
}

}  // namespace

bool VectorState::isOpaque(bool ofLines) const {
    return !masked && !blended && (ofLines ? strokeAlpha : fillAlpha) > opaque;
}

bool VectorState::showsSolid(bool ofLines) const {
    return isOpaque(ofLines) && (ofLines ? stroke : fill).solid;
}

VectorColor VectorState::textColor() const {
    const double alpha = std::clamp(groupAlpha * fillAlpha, 0.0, 1.0);
    VectorColor color = 0;
    for (int shift = 16; shift >= 0; shift -= 8) {
        const double part = fill.color >> shift & 0xFFU;
        color |= static_cast<VectorColor>(std::lround(255 - alpha * (255 - part))) << shift;
    }
    return color;
}

VectorColor colorOf(double red, double green, double blue) {
    const auto part = [](double value) {
        return static_cast<VectorColor>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
    };
    return part(red) << 16U | part(green) << 8U | part(blue);
}

VectorMatrix matrixOf(QPDFObjectHandle numbers) {
    return {numberAt(numbers, 0, 1), numberAt(numbers, 1, 0), numberAt(numbers, 2, 0),
            numberAt(numbers, 3, 1), numberAt(numbers, 4, 0), numberAt(numbers, 5, 0)};
}

VectorBox boxOf(QPDFObjectHandle numbers, const VectorMatrix& matrix) {
    VectorBox box;
    for (const int x : {0, 2}) {
        for (const int y : {1, 3}) box.take(matrix.at(numberAt(numbers, x, 0), numberAt(numbers, y, 0)));
    }
    return box;
}

VectorBox unitBox(const VectorMatrix& matrix) {
    VectorBox box;
    for (const double x : {0.0, 1.0}) {
        for (const double y : {0.0, 1.0}) box.take(matrix.at(x, y));
    }
    return box;
}

void TextRun::add(const std::vector<VectorGlyph>& glyphs) {
    for (const VectorGlyph& glyph : glyphs) {
        length_ += glyph.advance;
        if (glyph.text.empty()) {
            if (!advances_.empty()) advances_.back() += glyph.advance;
            continue;
        }
        // What stands for several characters is shared among them.
        const double each = glyph.advance / static_cast<double>(glyph.text.size());
        text_ += glyph.text;
        advances_.insert(advances_.end(), glyph.text.size(), each);
    }
}

void TextRun::move(double distance) {
    length_ += distance;
    if (advances_.empty()) {
        begin_ = VectorMatrix{1, 0, 0, 1, distance * size_, 0}.then(begin_);
        length_ -= distance;
    } else {
        advances_.back() += distance;
    }
}

void TextRun::join(const TextRun& other) {
    length_ += other.length_;
    text_ += other.text_;
    advances_.insert(advances_.end(), other.advances_.begin(), other.advances_.end());
}

void TextRun::replaceText(const std::u32string& text) {
    text_ = text;
    isAsRead_ = true;
    advances_.assign(text.size(), text.empty() ? 0 : length_ / static_cast<double>(text.size()));
}

VectorMatrix TextRun::behind() const { return VectorMatrix{1, 0, 0, 1, length_ * size_, 0}.then(begin_); }

std::optional<VectorText> TextRun::text(const VectorMatrix& page) const {
    if (text_.empty()) return std::nullopt;
    const VectorMatrix whole = begin_.then(page);
    VectorText made;
    made.begin = {whole.e, whole.f};
    // How large the letters are is told by their height, how far they go by their base line.
    const double along = std::hypot(whole.a, whole.b);
    made.size = along > 0 ? size_ * std::abs(whole.a * whole.d - whole.b * whole.c) / along : 0;
    made.angle = std::atan2(-whole.b, whole.a);
    made.text = text_;
    made.advances = advances_;
    for (double& each : made.advances) each *= size_ * along;
    if (!isAsRead_ && std::any_of(made.text.begin(), made.text.end(), isFromTheRight)) {
        // Glyphs come as they stand, a text as it is read.
        std::reverse(made.text.begin(), made.text.end());
        std::reverse(made.advances.begin(), made.advances.end());
    }
    if (!(made.size > 0)) return std::nullopt;
    return made;
}

}  // namespace vexa::frontend
