#include "backend/tables/layout/column_contents.h"

#include <algorithm>
#include <array>

#include "backend/text/ascii.h"

namespace vexa::tables {

namespace {

struct Contents {
    std::size_t numbers = 0;
    std::size_t words = 0;
};

/// What stands for a value that is not there: "-", "–", "...", "*".
bool isSign(std::string_view text) {
    constexpr std::array<std::string_view, 6> dashes{"–", "—", "−", "…", "·", "†"};
    while (!text.empty()) {
        const auto* const dash =
            std::find_if(dashes.begin(), dashes.end(), [&text](auto each) { return text.starts_with(each); });
        if (dash != dashes.end()) {
            text.remove_prefix(dash->size());
            continue;
        }
        const char first = text.front();
        if (static_cast<unsigned char>(first) >= 0x80 || isAsciiLetter(first) || isAsciiDigit(first)) {
            return false;
        }
        text.remove_prefix(1);
    }
    return true;
}

std::size_t skipDigits(std::string_view& text) {
    std::size_t count = 0;
    while (count < text.size() && isAsciiDigit(text[count])) ++count;
    text.remove_prefix(count);
    return count;
}

bool skip(std::string_view& text, std::string_view characters) {
    if (text.empty() || characters.find(text.front()) == std::string_view::npos) return false;
    text.remove_prefix(1);
    return true;
}

/// A sign, a currency, digits with marks between them, an exponent, a percent sign.
bool isWrittenNumber(std::string_view text) {
    constexpr std::string_view minus = "−";
    if (text.starts_with(minus)) {
        text.remove_prefix(minus.size());
    } else {
        static_cast<void>(skip(text, "+-"));
    }
    static_cast<void>(skip(text, "$"));
    // A number of an order or a post code is not counted with.
    if (text.size() > 1 && text[0] == '0' && isAsciiDigit(text[1])) return false;
    std::size_t digits = skipDigits(text);
    while (skip(text, ".,'")) {
        const std::size_t more = skipDigits(text);
        if (more == 0) return false;
        digits += more;
    }
    if (digits == 0) return false;
    if (skip(text, "eE")) {
        static_cast<void>(skip(text, "+-"));
        if (skipDigits(text) == 0) return false;
    }
    static_cast<void>(skip(text, "%"));
    return text.empty();
}

template <typename IsNumber>
std::vector<Contents> contentsOf(const TableGrid& grid, IsNumber isNumber) {
    std::vector<Contents> contents(grid.columns);
    for (const GridCell& cell : grid.cells) {
        if (cell.role != GridRole::data || cell.kind == CellKind::empty) continue;
        Contents& column = contents[cell.column];
        if (isNumber(cell)) {
            ++column.numbers;
        } else if (!isSign(grid.text(cell))) {
            ++column.words;
        }
    }
    return contents;
}

void alignColumns(TableGrid& grid, const std::vector<bool>& isRight) {
    for (GridCell& cell : grid.cells) {
        if (cell.kind == CellKind::text && cell.role == GridRole::data && isRight[cell.column]) {
            cell.alignsRight = true;
        }
    }
}

}  // namespace

void alignTexts(TableGrid& grid, const std::vector<bool>& hasFormat) {
    const std::vector<Contents> contents =
        contentsOf(grid, [](const GridCell& cell) { return cell.kind == CellKind::number; });
    Contents all;
    for (const Contents& each : contents) {
        all.numbers += each.numbers;
        all.words += each.words;
    }
    std::vector<bool> isRight(grid.columns);
    for (std::size_t i = grid.labelColumns; i < grid.columns; ++i) {
        const Contents& column = contents[i];
        const bool isFormatted = i - grid.labelColumns < hasFormat.size() && hasFormat[i - grid.labelColumns];
        const Contents& counted = column.numbers + column.words > 0 ? column : all;
        isRight[i] = isFormatted || counted.numbers > counted.words;
    }
    alignColumns(grid, isRight);
}

void alignWrittenNumbers(TableGrid& grid) {
    const std::vector<Contents> contents =
        contentsOf(grid, [&grid](const GridCell& cell) { return isWrittenNumber(grid.text(cell)); });
    std::vector<bool> isRight(grid.columns);
    for (std::size_t i = grid.labelColumns; i < grid.columns; ++i) {
        isRight[i] = contents[i].numbers > 0 && contents[i].words == 0;
    }
    alignColumns(grid, isRight);
}

}  // namespace vexa::tables
