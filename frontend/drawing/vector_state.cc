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

VectorMatrix matrixOf(const QPDFObjectHandle& numbers) {
    return {numberAt(numbers, 0, 1), numberAt(numbers, 1, 0), numberAt(numbers, 2, 0),
            numberAt(numbers, 3, 1), numberAt(numbers, 4, 0), numberAt(numbers, 5, 0)};
}

VectorBox boxOf(const QPDFObjectHandle& numbers, const VectorMatrix& matrix) {
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
        // What stands for several characters is shared among them.
        const double each = glyph.advance / static_cast<double>(std::max<std::size_t>(glyph.text.size(), 1));
        for (std::size_t i = 0; i < glyph.text.size(); ++i) {
            text_ += glyph.text[i];
            places_.push_back(length_ + each * static_cast<double>(i));
            widths_.push_back(each);
        }
        length_ += glyph.advance;
    }
}

void TextRun::move(double distance) { length_ += distance; }

double TextRun::distanceTo(const VectorMatrix& place) const {
    const double square = begin_.a * begin_.a + begin_.b * begin_.b;
    if (!(square > 0) || !(size_ > 0)) return 0;
    return ((place.e - begin_.e) * begin_.a + (place.f - begin_.f) * begin_.b) / square / size_;
}

void TextRun::join(const TextRun& other) {
    const double distance = distanceTo(other.begin_);
    length_ = distance + other.length_;
    text_ += other.text_;
    for (const double each : other.places_) places_.push_back(distance + each);
    widths_.insert(widths_.end(), other.widths_.begin(), other.widths_.end());
}

void TextRun::replaceText(const std::u32string& text) {
    double begin = 0;
    double end = 0;
    for (std::size_t i = 0; i < places_.size(); ++i) {
        begin = i == 0 ? places_[i] : std::min(begin, places_[i]);
        end = i == 0 ? places_[i] + widths_[i] : std::max(end, places_[i] + widths_[i]);
    }
    if (places_.empty()) end = length_;
    text_ = text;
    widths_.assign(text.size(), (end - begin) / static_cast<double>(std::max<std::size_t>(text.size(), 1)));
    places_.clear();
    for (const double each : widths_) {
        places_.push_back(begin);
        begin += each;
    }
    replaced_ = true;
}

VectorMatrix TextRun::behind() const { return VectorMatrix{1, 0, 0, 1, length_ * size_, 0}.then(begin_); }

void TextRun::order(std::u32string& text, std::vector<double>& advances, double& begin) const {
    text = text_;
    begin = places_.front();
    const bool isFromRight = !replaced_ && std::any_of(text.begin(), text.end(), isFromTheRight);
    if (isFromRight) {
        // Glyphs come from the right in the order in which they are read, or from the left as they stand.
        begin = *std::min_element(places_.begin(), places_.end());
        advances = widths_;
        if (places_.back() >= places_.front() && places_.size() > 1) {
            std::reverse(text.begin(), text.end());
            std::reverse(advances.begin(), advances.end());
        }
        return;
    }
    for (std::size_t i = 0; i + 1 < places_.size(); ++i) advances.push_back(places_[i + 1] - places_[i]);
    advances.push_back(widths_.back());
}

std::optional<VectorText> TextRun::text(const VectorMatrix& page) const {
    if (text_.empty()) return std::nullopt;
    VectorText made;
    double begin = 0;
    order(made.text, made.advances, begin);
    const VectorMatrix whole = begin_.then(page);
    made.begin = whole.at(begin * size_, 0);
    // How large the letters are is told by their height, how far they go by their base line.
    const double along = std::hypot(whole.a, whole.b);
    made.size = along > 0 ? size_ * std::abs(whole.a * whole.d - whole.b * whole.c) / along : 0;
    made.angle = std::atan2(-whole.b, whole.a);
    for (double& each : made.advances) each *= size_ * along;
    if (!(made.size > 0)) return std::nullopt;
    return made;
}

}  // namespace vexa::frontend
