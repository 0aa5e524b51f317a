#include "frontend/export/workbook/sheet_place.h"

#include <algorithm>

#include "backend/strings/dictionary.h"
#include "backend/text/ascii.h"

namespace vexa::frontend {

namespace {

constexpr std::uint64_t letters = 26;
/// Beyond, numbers grow no more: no sheet is that large.
constexpr std::uint64_t enough = 1'000'000'000;

std::string_view withoutBlanks(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(" \t");
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
}

void skipDollar(std::string_view& text) {
    if (text.starts_with('$')) text.remove_prefix(1);
}

/// The column's letters, or the row's digits, from the front of `text`, counted from 1; 0 for none.
std::uint64_t takeColumn(std::string_view& text) {
    std::uint64_t number = 0;
    for (; !text.empty() && isAsciiLetter(text.front()); text.remove_prefix(1)) {
        if (number < enough) number = number * letters + (static_cast<std::uint64_t>(text.front()) & 0x1FU);
    }
    return number;
}
std::uint64_t takeRow(std::string_view& text) {
    std::uint64_t number = 0;
    for (; !text.empty() && isAsciiDigit(text.front()); text.remove_prefix(1)) {
        if (number < enough) number = number * 10 + static_cast<std::uint64_t>(text.front() - '0');
    }
    return number;
}

}  // namespace

std::optional<SheetPlace> parseSheetPlace(std::string_view text) {
    text = withoutBlanks(text);
    skipDollar(text);
    const std::uint64_t column = takeColumn(text);
    skipDollar(text);
    const std::uint64_t row = takeRow(text);
    if (column == 0 || row == 0 || !text.empty()) return std::nullopt;
    return SheetPlace{row - 1, column - 1};
}

std::string sheetPlaceName(const SheetPlace& place) {
    std::string name;
    for (std::uint64_t rest = place.column + 1; rest > 0; rest = (rest - 1) / letters) {
        name.insert(name.begin(), static_cast<char>('A' + (rest - 1) % letters));
    }
    return name + std::to_string(place.row + 1);
}

std::optional<SheetPlace> startPlace(std::string_view text, const SheetLimits& limits, ExportReport& report) {
    const std::optional<SheetPlace> place = parseSheetPlace(text);
    if (!place) {
        report.fail(
            ExportError::other,
            composed(
                "\"^1\" is no cell. Write STARTCELL with the column's letters and the row's number, as in 'B3'."_text,
                {std::string(text)}));
    } else if (place->row >= limits.rows || place->column >= limits.columns) {
        report.fail(ExportError::other,
                    composed("There is no cell ^1: the last one of a sheet of this format is ^2."_text,
                             {std::string(withoutBlanks(text)),
                              sheetPlaceName({limits.rows - 1ULL, limits.columns - 1ULL})}));
    } else {
        return place;
    }
    return std::nullopt;
}

bool fitsFrom(const SheetPlace& place, std::uint64_t rows, std::uint64_t columns, const SheetLimits& limits,
              ExportReport& report) {
    if (place.column + columns > limits.columns) {
        report.fail(
            ExportError::tooManyColumns,
            composed(
                "What is exported has ^1 columns, and from ^2 on a sheet of this format has ^3."_text,
                {std::to_string(columns), sheetPlaceName(place),
                 std::to_string(limits.columns - std::min<std::uint64_t>(place.column, limits.columns))}));
    } else if (place.row + rows > limits.rows) {
        report.fail(
            ExportError::other,
            composed("What is exported has ^1 rows, and from ^2 on a sheet of this format has ^3."_text,
                     {std::to_string(rows), sheetPlaceName(place),
                      std::to_string(limits.rows - std::min<std::uint64_t>(place.row, limits.rows))}));
    }
    return !report.failed();
}

}  // namespace vexa::frontend
