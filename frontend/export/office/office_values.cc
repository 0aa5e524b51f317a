#include "frontend/export/office/office_values.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace vexa::frontend {

namespace {

constexpr double emuPerPoint = 12'700;
constexpr double twipsPerPoint = 20;

std::int64_t unitsOf(double points, double unit) {
    return std::llround(std::clamp(points, -1e6, 1e6) * unit);
}

double fontSize(double points) { return std::clamp(points, smallestDocumentFont, largestDocumentFont); }

}  // namespace

std::int64_t emuOf(double points) { return unitsOf(points, emuPerPoint); }

std::int64_t twipsOf(double points) { return unitsOf(points, twipsPerPoint); }

std::int64_t halfPointsOf(double points) { return unitsOf(fontSize(points), 2); }

std::int64_t hundredthsOf(double points) { return unitsOf(fontSize(points), 100); }

std::string officeColor(tables::Color color) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (int shift = 20; shift >= 0; shift -= 4) text += digits[color.rgb >> shift & 0xFU];
    return text;
}

std::string officeFont(std::string_view font) {
    if (font.empty() || font == "sans-serif") return "Arial";
    if (font == "serif") return "Times New Roman";
    if (font == "monospace") return "Courier New";
    return std::string(font);
}

std::string officeLanguage(std::string_view language) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 10> regions{{{"de", "de-DE"},
                                                                                     {"en", "en-US"},
                                                                                     {"es", "es-ES"},
                                                                                     {"fr", "fr-FR"},
                                                                                     {"it", "it-IT"},
                                                                                     {"ja", "ja-JP"},
                                                                                     {"ko", "ko-KR"},
                                                                                     {"pl", "pl-PL"},
                                                                                     {"ru", "ru-RU"},
                                                                                     {"zh", "zh-CN"}}};
    if (language.empty()) return "en-US";
    for (const auto& [known, tag] : regions) {
        if (language == known) return std::string(tag);
    }
    std::string tag(language);
    std::replace(tag.begin(), tag.end(), '_', '-');
    return tag;
}

double officeLineWidth(tables::LineStyle style) {
    constexpr std::array<double, 7> widths{0, 0.5, 1, 2, 3, 0.5, 0.5};
    return widths[static_cast<std::size_t>(style)];
}

}  // namespace vexa::frontend
