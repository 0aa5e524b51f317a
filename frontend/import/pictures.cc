#include "frontend/import/pictures.h"

#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <pugixml.hpp>
#include <string_view>
#include <utility>

#include "backend/strings/dictionary.h"
#include "backend/text/utf8.h"
#include "frontend/package/deflate.h"

namespace vexa::frontend {

namespace {

constexpr double kPointsPerPixel = 0.75;
constexpr double kDefaultWidth = 300 * kPointsPerPixel;
constexpr double kDefaultHeight = 150 * kPointsPerPixel;
constexpr double kMostPoints = 1e6;
constexpr std::string_view kSignature = "\x89PNG\r\n\x1a\n";

constexpr std::array<std::pair<std::string_view, double>, 10> kUnits{{{"", kPointsPerPixel},
                                                                      {"px", kPointsPerPixel},
                                                                      {"pt", 1},
                                                                      {"pc", 12},
                                                                      {"in", 72},
                                                                      {"cm", 72 / 2.54},
                                                                      {"mm", 7.2 / 2.54},
                                                                      {"Q", 1.8 / 2.54},
                                                                      {"em", 12},
                                                                      {"ex", 6}}};

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// Takes a number off the beginning of `text`.
std::optional<double> takeNumber(std::string_view& text) {
    const std::size_t begin = text.find_first_not_of(" \t\r\n,");
    text.remove_prefix(begin == std::string_view::npos ? text.size() : begin);
    if (text.starts_with('+')) text.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc()) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return value;
}

bool isLength(double points) { return points > 0 && points <= kMostPoints; }

std::optional<double> readLength(std::string_view text) {
    const std::optional<double> number = takeNumber(text);
    if (!number) return std::nullopt;
    for (const auto& [unit, points] : kUnits) {
        if (trimmed(text) == unit && isLength(*number * points)) return *number * points;
    }
    return std::nullopt;  // a percentage, among others
}

struct Size {
    double width = 0;
    double height = 0;
};

/// Width and height of a view box as if its units were px; nothing where there is none.
std::optional<Size> readViewBox(std::string_view text) {
    std::array<double, 4> numbers{};
    for (double& number : numbers) {
        const std::optional<double> read = takeNumber(text);
        if (!read) return std::nullopt;
        number = *read;
    }
    const Size size{numbers[2] * kPointsPerPixel, numbers[3] * kPointsPerPixel};
    return isLength(size.width) && isLength(size.height) ? std::optional(size) : std::nullopt;
}

Size svgSize(const pugi::xml_node& root) {
    const std::optional<double> width = readLength(root.attribute("width").value());
    const std::optional<double> height = readLength(root.attribute("height").value());
    const std::optional<Size> box = readViewBox(root.attribute("viewBox").value());
    if (width && height) return {*width, *height};
    if (!box) return {width.value_or(kDefaultWidth), height.value_or(kDefaultHeight)};
    const double heightOfWidth = box->height / box->width;
    if (width) return {*width, *width * heightOfWidth};
    if (height) return {*height / heightOfWidth, *height};
    return *box;
}

std::string_view localName(std::string_view name) {
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        text.remove_prefix(asciiPrefix(text));
        if (text.empty()) break;
        const Utf8Character character = decodeUtf8(text);
        if (!character.valid) return false;
        text.remove_prefix(character.length);
    }
    return true;
}

std::uint32_t bigEndian(std::string_view bytes) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) value = value << 8U | static_cast<unsigned char>(bytes[i]);
    return value;
}

/// What draws a picture may pass over a chunk whose name begins with a small letter.
bool isNeeded(std::string_view chunkName) { return chunkName.front() >= 'A' && chunkName.front() <= 'Z'; }

/// True when the chunks are whole and in order; else `reason` says why not.
bool hasWholeChunks(std::string_view png, std::string& reason) {
    constexpr std::size_t kAround = 12;  // length, name and checksum
    constexpr std::size_t kBeforeData = 8;
    constexpr std::size_t kNameLength = 4;
    constexpr std::size_t kHeaderLength = 13;
    bool hasData = false;
    reason = translated("The PNG is cut off or damaged."_text);
    std::string_view bytes = png.substr(kSignature.size());
    for (bool isFirst = true; bytes.size() >= kAround; isFirst = false) {
        const std::size_t length = bigEndian(bytes);
        const std::string_view name = bytes.substr(kNameLength, kNameLength);
        if (length > bytes.size() - kAround || isFirst != (name == "IHDR")) return false;
        if (isFirst && length != kHeaderLength) return false;
        const std::string_view checked = bytes.substr(kNameLength, kNameLength + length);
        if (isNeeded(name) && crcOf(checked) != bigEndian(bytes.substr(kBeforeData + length))) {
            reason = composed("The PNG is damaged: a checksum does not fit what stands at byte ^1."_text,
                              {std::to_string(png.size() - bytes.size())});
            return false;
        }
        hasData = hasData || name == "IDAT";
        if (name == "IEND") return hasData;
        bytes.remove_prefix(kAround + length);
    }
    return false;
}

}  // namespace

std::shared_ptr<const Picture> readSvg(std::string bytes, std::string& reason) {
    if (!isUtf8(bytes)) {
        reason = translated("The SVG is not in UTF-8. Save it in UTF-8."_text);
        return nullptr;
    }
    pugi::xml_document document;
    const pugi::xml_parse_result parsed =
        document.load_buffer(bytes.data(), bytes.size(), pugi::parse_minimal, pugi::encoding_utf8);
    const pugi::xml_node root = document.document_element();
    if (!parsed || localName(root.name()) != "svg") {
        reason = parsed ? composed("This is not an SVG: its root is '^1'."_text, {root.name()})
                        : composed("This is not an SVG: ^1 (byte ^2)."_text,
                                   {parsed.description(), std::to_string(parsed.offset)});
        return nullptr;
    }
    const Size size = svgSize(root);
    return std::make_shared<const Picture>(
        Picture{PictureForm::svg, std::move(bytes), size.width, size.height});
}

std::shared_ptr<const Picture> readPng(std::string bytes, std::string& reason) {
    constexpr std::size_t kWidthAt = 16;
    constexpr std::size_t kHeightAt = 20;
    if (!std::string_view(bytes).starts_with(kSignature)) {
        reason = translated("This is not a PNG."_text);
        return nullptr;
    }
    if (!hasWholeChunks(bytes, reason)) return nullptr;
    const double width = bigEndian(std::string_view(bytes).substr(kWidthAt)) * kPointsPerPixel;
    const double height = bigEndian(std::string_view(bytes).substr(kHeightAt)) * kPointsPerPixel;
    if (!isLength(width) || !isLength(height)) {
        reason = translated("The PNG is cut off or damaged."_text);
        return nullptr;
    }
    return std::make_shared<const Picture>(Picture{PictureForm::png, std::move(bytes), width, height});
}

std::shared_ptr<const Picture> readPicture(std::string bytes, std::string& reason) {
    return bytes.starts_with('\x89') ? readPng(std::move(bytes), reason) : readSvg(std::move(bytes), reason);
}

}  // namespace vexa::frontend
