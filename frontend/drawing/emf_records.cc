#include "frontend/drawing/emf_records.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>

#include "backend/text/utf16.h"
#include "frontend/drawing/picture_drawing.h"

namespace vexa::frontend {

namespace {

constexpr double unitsPerPoint = 100;
/// The device that the picture is made for: 96 dots an inch, with sides that are whole millimetres.
constexpr std::int64_t devicePixelsWide = 4800;
constexpr std::int64_t devicePixelsHigh = 2400;
constexpr std::int64_t deviceMillimetresWide = 1270;
constexpr std::int64_t deviceMillimetresHigh = 635;
constexpr double hundredthsPerPoint = 2540.0 / 72.0;  // of a millimetre

constexpr std::uint32_t headerBytes = 108;
constexpr std::int64_t anisotropic = 8;
constexpr std::int64_t baseLine = 24;
constexpr std::int64_t transparentGround = 1;
constexpr std::int64_t alternate = 1;
constexpr std::int64_t winding = 2;
constexpr std::int64_t clipAnd = 1;
constexpr std::int64_t copyRaster = 0x00CC0020;

enum : std::uint32_t { brushKind, penKind, fontKind };

std::int64_t units(double points) { return std::llround(std::clamp(points, -1e6, 1e6) * unitsPerPoint); }

/// As Windows writes colours: red in the lowest byte.
std::int64_t colorRef(VectorColor color) {
    return (color & 0xFFU) << 16U | (color & 0xFF00U) | (color >> 16U & 0xFFU);
}

void appendNumber(std::string& bytes, std::int64_t value, int length = 4) {
    const auto number = static_cast<std::uint64_t>(value);
    for (int i = 0; i < length; ++i)
        bytes += static_cast<char>(number >> (8U * static_cast<unsigned>(i)) & 0xFFU);
}

void appendUnits(std::string& bytes, std::u16string_view text) {
    for (const char16_t each : text) appendNumber(bytes, each, 2);
}

/// A text of so many units, with zeros behind.
void appendField(std::string& bytes, std::u16string_view text, std::size_t count) {
    text = text.substr(0, count - 1);
    appendUnits(bytes, text);
    bytes.append(2 * (count - text.size()), '\0');
}

}  // namespace

EmfRecords::EmfRecords(double width, double height) : width_(width), height_(height) {
    add(EmfRecord::setMapMode, {anisotropic});
    add(EmfRecord::setWindowOrigin, {0, 0});
    add(EmfRecord::setWindowExtent,
        {std::max<std::int64_t>(units(width), 1), std::max<std::int64_t>(units(height), 1)});
    add(EmfRecord::setViewportOrigin, {0, 0});
    add(EmfRecord::setViewportExtent, {std::max(std::llround(width * pixelsPerPoint), 1LL),
                                       std::max(std::llround(height * pixelsPerPoint), 1LL)});
    add(EmfRecord::setBackgroundMode, {transparentGround});
    add(EmfRecord::setTextAlign, {baseLine});
    add(EmfRecord::setStretchMode, {3});  // colours are taken as they are
}

void EmfRecords::add(EmfRecord type, std::initializer_list<std::int64_t> values) {
    appendNumber(records_, static_cast<std::int64_t>(type));
    appendNumber(records_, static_cast<std::int64_t>(8 + 4 * values.size()));
    for (const std::int64_t each : values) appendNumber(records_, each);
    ++count_;
}

void EmfRecords::save() { add(EmfRecord::saveDevice, {}); }

void EmfRecords::restore() {
    add(EmfRecord::restoreDevice, {-1});
    selected_.clear();
    fillMode_ = textColor_ = miterLimit_ = -1;
}

void EmfRecords::path(const VectorPath& path) {
    add(EmfRecord::beginPath, {});
    std::vector<VectorPoint> curves;
    const auto flush = [&] {
        if (curves.empty()) return;
        appendNumber(records_, static_cast<std::int64_t>(EmfRecord::polyBezierTo));
        appendNumber(records_, static_cast<std::int64_t>(28 + 8 * curves.size()));
        for (const std::int64_t each : {0, 0, -1, -1}) appendNumber(records_, each);
        appendNumber(records_, static_cast<std::int64_t>(curves.size()));
        for (const VectorPoint& each : curves) {
            appendNumber(records_, units(each.x));
            appendNumber(records_, units(each.y));
        }
        ++count_;
        curves.clear();
    };
    for (const PathPart& part : path.parts) {
        if (part.step == PathStep::curve) {
            curves.insert(curves.end(), part.points.begin(), part.points.end());
            continue;
        }
        flush();
        const std::int64_t x = units(part.points[0].x);
        const std::int64_t y = units(part.points[0].y);
        if (part.step == PathStep::move) add(EmfRecord::moveTo, {x, y});
        if (part.step == PathStep::line) add(EmfRecord::lineTo, {x, y});
        if (part.step == PathStep::close) add(EmfRecord::closeFigure, {});
    }
    flush();
    add(EmfRecord::endPath, {});
}

void EmfRecords::setFillMode(bool evenOdd) {
    const std::int64_t mode = evenOdd ? alternate : winding;
    if (std::exchange(fillMode_, mode) != mode) add(EmfRecord::setFillMode, {mode});
}

void EmfRecords::clip(const VectorPath& path, bool evenOdd) {
    setFillMode(evenOdd);
    this->path(path);
    add(EmfRecord::selectClipPath, {clipAnd});
}

void EmfRecords::select(std::uint32_t object) { add(EmfRecord::selectObject, {object}); }

std::uint32_t EmfRecords::object(EmfRecord type, const std::string& content) {
    const auto number = static_cast<std::uint32_t>(objects_.size() + 1);
    const auto [found, isNew] =
        objects_.try_emplace(std::to_string(static_cast<unsigned>(type)) + content, number);
    if (isNew) {
        appendNumber(records_, static_cast<std::int64_t>(type));
        appendNumber(records_, static_cast<std::int64_t>(12 + content.size()));
        appendNumber(records_, number);
        records_ += content;
        ++count_;
    }
    return found->second;
}

void EmfRecords::fill(const VectorPath& path, bool evenOdd, VectorColor color) {
    std::string brush;
    appendNumber(brush, 0);  // in one colour
    appendNumber(brush, colorRef(color));
    appendNumber(brush, 0);
    const std::uint32_t number = object(EmfRecord::createBrush, brush);
    if (std::exchange(selected_[brushKind], number) != number) select(number);
    setFillMode(evenOdd);
    this->path(path);
    add(EmfRecord::fillPath, {0, 0, -1, -1});
}

void EmfRecords::stroke(const VectorPath& path, const VectorLine& line, VectorColor color) {
    constexpr std::int64_t geometric = 0x10000;
    constexpr std::array<std::int64_t, 3> caps{0x200, 0, 0x100};
    constexpr std::array<std::int64_t, 3> joins{0x2000, 0, 0x1000};
    std::string pen;
    for (int i = 0; i < 4; ++i) appendNumber(pen, 0);  // no bitmap
    appendNumber(pen, geometric | caps[static_cast<std::size_t>(line.cap)] |
                          joins[static_cast<std::size_t>(line.join)]);
    appendNumber(pen, std::max<std::int64_t>(units(line.width), 1));
    appendNumber(pen, 0);
    appendNumber(pen, colorRef(color));
    appendNumber(pen, 0);
    appendNumber(pen, 0);
    const std::uint32_t number = object(EmfRecord::createPen, pen);
    if (std::exchange(selected_[penKind], number) != number) select(number);
    if (line.join == LineJoin::miter) {
        const auto limit = std::max<std::int64_t>(std::llround(line.miterLimit), 1);
        if (std::exchange(miterLimit_, limit) != limit) add(EmfRecord::setMiterLimit, {limit});
    }
    this->path(path);
    add(EmfRecord::strokePath, {0, 0, -1, -1});
}

std::uint32_t EmfRecords::fontOf(const VectorText& text) {
    constexpr std::size_t nameUnits = 32;
    constexpr std::size_t styledUnits = 64;
    std::int64_t angle = std::llround(text.angle * 1800 / std::numbers::pi);
    if (angle < 0) angle += 3600;
    const std::u16string family = utf8ToUtf16(text.font.family);
    std::string font;
    appendNumber(font, -std::max<std::int64_t>(units(text.size), 1));
    appendNumber(font, 0);
    appendNumber(font, angle);
    appendNumber(font, angle);
    appendNumber(font, text.font.bold ? 700 : 400);
    font += static_cast<char>(text.font.italic ? 1 : 0);
    font.append(2, '\0');
    font += '\x01';  // the usual character set
    font.append("\x00\x00\x04\x00", 4);
    appendField(font, family, nameUnits);
    appendField(font, family, styledUnits);
    appendField(font, {}, nameUnits);
    font.append(4 * 6 + 10 + 2, '\0');
    return object(EmfRecord::createFont, font);
}

void EmfRecords::setTextColor(VectorColor color) {
    const std::int64_t value = colorRef(color);
    if (std::exchange(textColor_, value) != value) add(EmfRecord::setTextColor, {value});
}

std::int64_t EmfRecords::appendCharacters(const VectorText& text, std::string& characters,
                                          std::string& advances) {
    std::int64_t count = 0;
    double exact = 0;
    std::int64_t written = 0;
    for (std::size_t i = 0; i < text.text.size(); ++i) {
        // Rounded so that the errors do not add up.
        exact += text.advances[i];
        const std::int64_t advance = units(exact) - written;
        written += advance;
        char32_t code = text.text[i];
        const bool isPair = code >= 0x10000;
        if (isPair) code -= 0x10000;
        appendNumber(characters, isPair ? 0xD800 + (code >> 10U) : code, 2);
        appendNumber(advances, advance);
        if (isPair) {
            appendNumber(characters, 0xDC00 + (code & 0x3FFU), 2);
            appendNumber(advances, 0);
        }
        count += isPair ? 2 : 1;
    }
    characters.append(characters.size() % 4, '\0');
    return count;
}

void EmfRecords::text(const VectorText& text) {
    constexpr std::int64_t fixedBytes = 76;
    const std::uint32_t font = fontOf(text);
    if (std::exchange(selected_[fontKind], font) != font) select(font);
    setTextColor(text.color);
    std::string characters;
    std::string advances;
    const std::int64_t count = appendCharacters(text, characters, advances);
    appendNumber(records_, static_cast<std::int64_t>(EmfRecord::text));
    appendNumber(records_, fixedBytes + static_cast<std::int64_t>(characters.size() + advances.size()));
    for (const std::int64_t each : {0, 0, -1, -1, 1}) appendNumber(records_, each);
    const auto scale = std::bit_cast<std::uint32_t>(static_cast<float>(hundredthsPerPoint / pixelsPerPoint));
    appendNumber(records_, scale);
    appendNumber(records_, scale);
    appendNumber(records_, units(text.begin.x));
    appendNumber(records_, units(text.begin.y));
    appendNumber(records_, count);
    appendNumber(records_, fixedBytes);
    appendNumber(records_, 0);
    for (const std::int64_t each : {0, 0, -1, -1}) appendNumber(records_, each);
    appendNumber(records_, fixedBytes + static_cast<std::int64_t>(characters.size()));
    records_ += characters + advances;
    ++count_;
}

void EmfRecords::bitmap(const VectorBox& place, const Bitmap& bitmap) {
    constexpr std::int64_t fixedBytes = 80;
    constexpr std::int64_t infoBytes = 40;
    std::string rows;
    for (int y = bitmap.height - 1; y >= 0; --y) {
        std::for_each(bitmap.row(y), bitmap.row(y) + bitmap.width,
                      [&rows](std::uint32_t pixel) { appendNumber(rows, pixel >> 8U, 3); });
        rows.append((4 - rows.size() % 4) % 4, '\0');
    }
    const auto length = static_cast<std::int64_t>(rows.size());
    const std::int64_t x = units(place.left);
    const std::int64_t y = units(place.top);
    add(EmfRecord::stretchBitmap,
        {0, 0, -1, -1, x, y, 0, 0, bitmap.width, bitmap.height, fixedBytes, infoBytes, fixedBytes + infoBytes,
         length, 0, copyRaster, units(place.right) - x, units(place.bottom) - y,
         // The header of the bitmap.
         infoBytes, bitmap.width, bitmap.height, 24 << 16 | 1, 0, length, 3780, 3780, 0, 0});
    // The pixels belong to the record.
    const std::size_t recordBytes = 8 + 28 * 4;
    std::string size;
    appendNumber(size, static_cast<std::int64_t>(recordBytes) + length);
    records_.replace(records_.size() - recordBytes + 4, 4, size);
    records_ += rows;
}

std::string EmfRecords::header(std::size_t bytes) const {
    std::string header;
    appendNumber(header, static_cast<std::int64_t>(EmfRecord::header));
    appendNumber(header, headerBytes);
    for (const std::int64_t each :
         {0LL, 0LL, std::llround(width_ * pixelsPerPoint) - 1, std::llround(height_ * pixelsPerPoint) - 1}) {
        appendNumber(header, std::max<std::int64_t>(each, 0));
    }
    for (const double each : {0.0, 0.0, width_, height_})
        appendNumber(header, std::llround(each * hundredthsPerPoint));
    header += " EMF";
    appendNumber(header, 0x10000);
    appendNumber(header, static_cast<std::int64_t>(bytes));
    appendNumber(header, count_ + 1);
    appendNumber(header, static_cast<std::int64_t>(std::min<std::size_t>(objects_.size() + 1, 0xFFFF)), 2);
    appendNumber(header, 0, 2);
    for (const std::int64_t each :
         {std::int64_t{0}, std::int64_t{0}, std::int64_t{0}, devicePixelsWide, devicePixelsHigh,
          deviceMillimetresWide, deviceMillimetresHigh, std::int64_t{0}, std::int64_t{0}, std::int64_t{0},
          deviceMillimetresWide * 1000, deviceMillimetresHigh * 1000}) {
        appendNumber(header, each);
    }
    return header;
}

std::string EmfRecords::finish() {
    add(EmfRecord::endOfFile, {0, 16, 20});
    return header(headerBytes + records_.size()) + records_;
}

}  // namespace vexa::frontend
