#include <charconv>
#include <cstddef>
#include <system_error>

#include "backend/tables/formats/date_text.h"
#include "backend/tables/formats/number_text.h"
#include "backend/text/ascii.h"

namespace vexa::tables {

namespace {

/// A number with a point and without marks.
std::optional<double> parsePlain(std::string_view text) {
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
        if (!text.empty() && text.front() == '-') return std::nullopt;
    }
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return value;
}

/// True when three digits and no fourth stand at `at`.
bool isGroup(std::string_view text, std::size_t at) {
    std::size_t count = 0;
    while (at + count < text.size() && count < 4 && isAsciiDigit(text[at + count])) ++count;
    return count == 3;
}

/// A number with grouping marks, which stand before groups of three digits of the whole part only.
std::optional<double> parseGrouped(std::string_view text, char groupMark, char decimalMark) {
    std::string plain;
    bool fraction = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == groupMark) {
            if (fraction || i == 0 || !isAsciiDigit(text[i - 1]) || !isGroup(text, i + 1))
                return std::nullopt;
        } else if (text[i] == decimalMark) {
            plain += '.';
            fraction = true;
        } else {
            plain += text[i];
        }
    }
    return parsePlain(plain);
}

std::optional<double> parseDollars(std::string_view text) {
    const bool negative = !text.empty() && text.front() == '-';
    if (negative) text.remove_prefix(1);
    if (!text.empty() && text.front() == '$') {
        text.remove_prefix(1);
        if (text.empty() || !isAsciiDigit(text.front())) return std::nullopt;
    }
    const std::optional<double> value = parseGrouped(text, ',', '.');
    if (!value || (negative && text.front() == '-')) return std::nullopt;
    return negative ? -*value : *value;
}

}  // namespace

std::optional<double> parseNumber(std::string_view text, DisplayFormat format) {
    text = withoutBlanksAround(text);
    if (countsSeconds(format.kind)) {
        const std::optional<double> seconds = parseSeconds(text, format.kind);
        return seconds ? seconds : parsePlain(text);
    }
    switch (format.kind) {
        case FormatKind::comma:
            return parseGrouped(text, ',', '.');
        case FormatKind::dot:
            return parseGrouped(text, '.', ',');
        case FormatKind::dollar:
            return parseDollars(text);
        case FormatKind::percent:
            if (!text.empty() && text.back() == '%') text.remove_suffix(1);
            return parsePlain(text);
        default:
            return parsePlain(text);
    }
}

}  // namespace vexa::tables
