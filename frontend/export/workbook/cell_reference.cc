#include "frontend/export/workbook/cell_reference.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace vexa::frontend {
namespace {

constexpr std::size_t mostLetters = 3;
constexpr std::size_t mostDigits = 7;

bool isLetter(char byte) {
    const char lower = static_cast<char>(static_cast<unsigned char>(byte) | 0x20U);
    return lower >= 'a' && lower <= 'z';
}

void passDollar(std::string_view& text) {
    if (text.starts_with('$')) {
        text.remove_prefix(1);
    }
}

std::string_view leadingLetters(std::string_view text) {
    std::size_t length = 0;
    while (length < text.size() && isLetter(text[length])) {
        ++length;
    }
    return text.substr(0, length);
}

}  // namespace

std::optional<std::uint32_t> readColumn(std::string_view letters) {
    if (letters.empty() || letters.size() > mostLetters) {
        return std::nullopt;
    }
    std::uint32_t column = 0;
    for (const char letter : letters) {
        if (!isLetter(letter)) {
            return std::nullopt;
        }
        column = column * 26 + (static_cast<unsigned char>(letter) | 0x20U) - 'a' + 1;
    }
    return column <= officeSheetLimits.columns ? std::optional(column - 1) : std::nullopt;
}

std::optional<SheetSpot> readSpot(std::string_view text) {
    passDollar(text);
    const std::string_view letters = leadingLetters(text);
    const std::optional<std::uint32_t> column = readColumn(letters);
    text.remove_prefix(letters.size());
    passDollar(text);
    std::uint32_t row = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, row);
    if (!column || text.empty() || text.size() > mostDigits || read.ec != std::errc() || read.ptr != end ||
        row == 0 || row > officeSheetLimits.rows) {
        return std::nullopt;
    }
    return SheetSpot{row - 1, *column};
}

std::optional<SheetRange> readRange(std::string_view text) {
    const std::size_t colon = text.find(':');
    const std::optional<SheetSpot> first = readSpot(text.substr(0, colon));
    const std::optional<SheetSpot> last =
        colon == std::string_view::npos ? first : readSpot(text.substr(colon + 1));
    if (!first || !last) {
        return std::nullopt;
    }
    const auto [top, bottom] = std::minmax(first->row, last->row);
    const auto [left, right] = std::minmax(first->column, last->column);
    return SheetRange{top, left, bottom - top + 1, right - left + 1};
}

std::optional<std::vector<SheetRange>> readRanges(std::string_view text) {
    std::vector<SheetRange> ranges;
    while (!text.empty()) {
        const std::string_view part = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(text.size(), part.size() + 1));
        if (part.empty()) {
            continue;
        }
        const std::optional<SheetRange> range = readRange(part);
        if (!range) {
            return std::nullopt;
        }
        ranges.push_back(*range);
    }
    return ranges;
}

void appendColumn(std::string& out, std::uint32_t column) {
    std::array<char, mostLetters + 1> letters{};
    std::size_t at = letters.size();
    for (std::uint32_t rest = column + 1; rest > 0 && at > 0; rest = (rest - 1) / 26) {
        letters[--at] = static_cast<char>('A' + (rest - 1) % 26);
    }
    out.append(letters.data() + at, letters.size() - at);
}

void appendSpot(std::string& out, SheetSpot spot) {
    appendColumn(out, spot.column);
    std::array<char, 16> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), spot.row + 1).ptr;
    out.append(digits.data(), end);
}

void appendRange(std::string& out, const SheetRange& range) {
    appendSpot(out, {range.row, range.column});
    if (range.rows > 1 || range.columns > 1) {
        out += ':';
        appendSpot(out, {range.row + range.rows - 1, range.column + range.columns - 1});
    }
}

std::string rangeText(const SheetRange& range) {
    std::string text;
    appendRange(text, range);
    return text;
}

std::string rangesText(const std::vector<SheetRange>& ranges) {
    std::string text;
    for (const SheetRange& range : ranges) {
        text += text.empty() ? "" : " ";
        appendRange(text, range);
    }
    return text;
}

SheetSpot upperLeft(const std::vector<SheetRange>& ranges) {
    SheetSpot spot{ranges.front().row, ranges.front().column};
    for (const SheetRange& range : ranges) {
        spot.row = std::min(spot.row, range.row);
        spot.column = std::min(spot.column, range.column);
    }
    return spot;
}

bool overlap(const SheetRange& left, const SheetRange& right) {
    return left.row < right.row + right.rows && right.row < left.row + left.rows &&
           left.column < right.column + right.columns && right.column < left.column + left.columns;
}

}  // namespace vexa::frontend
