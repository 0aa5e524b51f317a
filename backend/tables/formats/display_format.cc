#include "backend/tables/formats/display_format.h"

#include <array>
#include <cstddef>

#include "backend/text/ascii.h"

namespace vexa::tables {

namespace {

/// In the order of `FormatKind`.
constexpr std::array<std::string_view, 14> kNames = {"",      "F",     "COMMA", "DOT",     "DOLLAR",
                                                     "PCT",   "E",     "N",     "DATE",    "ADATE",
                                                     "EDATE", "SDATE", "TIME",  "DATETIME"};

char capital(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}

/// The kind whose name is `word`; `none` where there is none.
FormatKind kindOf(std::string_view word) {
    for (std::size_t kind = 1; kind < kNames.size(); ++kind) {
        const std::string_view name = kNames[kind];
        bool same = word.size() == name.size();
        for (std::size_t i = 0; same && i < name.size(); ++i) {
            same = capital(word[i]) == name[i];
        }
        if (same) return static_cast<FormatKind>(kind);
    }
    return FormatKind::none;
}

/// Takes one or two digits from the beginning of `text`; nothing where there are none, or more.
std::optional<int> takeNumber(std::string_view& text) {
    std::size_t length = 0;
    int number = 0;
    while (length < text.size() && isAsciiDigit(text[length])) {
        if (length == 2) return std::nullopt;
        number = number * 10 + (text[length++] - '0');
    }
    if (length == 0) return std::nullopt;
    text.remove_prefix(length);
    return number;
}

}  // namespace

std::optional<DisplayFormat> parseFormat(std::string_view name) {
    std::string_view rest = withoutBlanksAround(name);
    std::size_t letters = 0;
    while (letters < rest.size() && !isAsciiDigit(rest[letters])) ++letters;
    const FormatKind kind = kindOf(rest.substr(0, letters));
    if (kind == FormatKind::none) return std::nullopt;
    rest.remove_prefix(letters);
    if (rest.empty() && countsSeconds(kind)) return DisplayFormat{kind, 0, 0};

    const std::optional<int> width = takeNumber(rest);
    if (!width || *width < 1 || *width > kGreatestFormatWidth) return std::nullopt;
    int decimals = 0;
    if (!rest.empty() && rest.front() == '.' && !countsSeconds(kind)) {
        rest.remove_prefix(1);
        const std::optional<int> number = takeNumber(rest);
        if (!number || *number > kMostFormatDecimals || *number >= *width) return std::nullopt;
        decimals = *number;
    }
    if (!rest.empty()) return std::nullopt;
    return DisplayFormat{kind, static_cast<std::uint8_t>(*width), static_cast<std::uint8_t>(decimals)};
}

std::string formatText(DisplayFormat format) {
    std::string text(kNames[static_cast<std::size_t>(format.kind)]);
    if (format.kind == FormatKind::none) return text;
    if (format.width > 0) text += std::to_string(format.width);
    const bool pads = format.kind == FormatKind::zeroPadded;
    if (!countsSeconds(format.kind) && (!pads || format.decimals > 0)) {
        text += '.';
        text += std::to_string(format.decimals);
    }
    return text;
}

}  // namespace vexa::tables
