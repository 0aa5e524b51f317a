#include "frontend/package/base64.h"

#include <array>
#include <cstdint>

namespace vexa::frontend {

namespace {

constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t kNoDigit = 64;
constexpr std::uint8_t kBlank = 65;

constexpr std::array<std::uint8_t, 256> makeValues() {
    std::array<std::uint8_t, 256> values{};
    for (auto& value : values) value = kNoDigit;
    for (std::size_t i = 0; i < kDigits.size(); ++i)
        values[static_cast<unsigned char>(kDigits[i])] = static_cast<std::uint8_t>(i);
    for (const char blank : {' ', '\t', '\r', '\n'}) values[static_cast<unsigned char>(blank)] = kBlank;
    return values;
}
constexpr std::array<std::uint8_t, 256> kValues = makeValues();

}  // namespace

std::string encodeBase64(std::string_view bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t group = 0;
        const std::size_t count = bytes.size() - i < 3 ? bytes.size() - i : 3;
        for (std::size_t j = 0; j < 3; ++j) {
            group = group << 8U | (j < count ? static_cast<unsigned char>(bytes[i + j]) : 0U);
        }
        for (std::size_t j = 0; j < 4; ++j) {
            text += j <= count ? kDigits[group >> (18U - 6U * j) & 63U] : '=';
        }
    }
    return text;
}

bool decodeBase64(std::string_view text, std::string& bytes) {
    bytes.clear();
    bytes.reserve(text.size() / 4 * 3 + 3);
    std::uint32_t bits = 0;
    unsigned digits = 0;
    unsigned padding = 0;
    for (const char c : text) {
        const std::uint8_t value = kValues[static_cast<unsigned char>(c)];
        if (value == kBlank) continue;
        if (c == '=') {
            ++padding;
            continue;
        }
        if (value == kNoDigit || padding > 0) return false;
        bits = bits << 6U | value;
        if (++digits % 4 != 0) continue;
        for (const unsigned shift : {16U, 8U, 0U}) bytes += static_cast<char>(bits >> shift & 0xFFU);
        bits = 0;
    }
    const unsigned left = digits % 4;
    if (left == 1 || (padding != 0 && (digits + padding) % 4 != 0)) return false;
    if (left >= 2) bytes += static_cast<char>(bits >> (left == 2 ? 4U : 10U) & 0xFFU);
    if (left == 3) bytes += static_cast<char>(bits >> 2U & 0xFFU);
    return true;
}

}  // namespace vexa::frontend
