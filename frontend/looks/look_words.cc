#include "frontend/looks/look_words.h"

#include <charconv>
#include <cstdint>

namespace vexa::frontend {

std::string colorText(tables::Color color) {
    constexpr char digits[] = "0123456789abcdef";
    std::string text = "#";
    for (int shift = 20; shift >= 0; shift -= 4) text += digits[color.rgb >> shift & 0xF];
    return text;
}

std::optional<tables::Color> parseColor(std::string_view text) {
    if (text.size() != 7 || text[0] != '#') return std::nullopt;
    std::uint32_t rgb = 0;
    const char* const end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(text.data() + 1, end, rgb, 16);
    if (error != std::errc() || behind != end) return std::nullopt;
    return tables::Color{rgb};
}

}  // namespace vexa::frontend
