#include "frontend/export/xlsx/sheet_rows.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace vexa::frontend {
namespace {

constexpr std::uint32_t noRow = std::numeric_limits<std::uint32_t>::max();
// What programs take.
constexpr double mostHeight = 409;

template <typename Number>
void appendDigits(std::string& out, Number number) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    out.append(digits.data(), end);
}

}  // namespace

void appendCellNumber(std::string& out, double number) {
    constexpr double mostExact = 1e15;
    if (number == std::floor(number) && std::abs(number) < mostExact) {
        appendDigits(out, static_cast<std::int64_t>(number));
    } else {
        appendDigits(out, number);
    }
}

SheetRows::SheetRows(const SheetFootprint& footprint, const CellNumbers& numbers, double rowHeight,
                     std::string_view prefix)
    : footprint_(footprint),
      numbers_(numbers),
      prefix_(prefix),
      cellTag_("<" + std::string(prefix) + "c r=\""),
      valueTag_("<" + std::string(prefix) + "v>"),
      endTags_("</" + std::string(prefix) + "v></" + std::string(prefix) + "c>"),
      heights_(footprint.content().heights) {
    // Pictures have as many rows as they take, were they of the usual height.
    for (const SheetPicture& picture : footprint.content().pictures) {
        for (std::uint32_t row = 0; rowHeight != usualRowHeight && row < picture.rows; ++row) {
            heights_.try_emplace(picture.row + row, usualRowHeight);
        }
    }
    nextHeight_ = heights_.begin();
    row_ = firstRow();
}

/// The first row that something is left of.
std::uint32_t SheetRows::firstRow() const {
    const auto& cells = footprint_.content().cells;
    const std::uint32_t ofCells = nextCell_ < cells.size() ? cells[nextCell_].row : noRow;
    return std::min(ofCells, nextHeight_ != heights_.end() ? nextHeight_->first : noRow);
}

std::optional<std::uint32_t> SheetRows::next() const {
    return row_ == noRow ? std::nullopt : std::optional(footprint_.at().row + row_);
}

std::optional<double> SheetRows::height() const {
    return nextHeight_ != heights_.end() && nextHeight_->first == row_
               ? std::optional(std::min(nextHeight_->second, mostHeight))
               : std::nullopt;
}

std::optional<std::uint32_t> SheetRows::nextColumn() const {
    const auto& cells = footprint_.content().cells;
    return nextCell_ < cells.size() && cells[nextCell_].row == row_
               ? std::optional(footprint_.at().column + cells[nextCell_].column)
               : std::nullopt;
}

void SheetRows::appendCell(std::string& out) {
    const SheetCell& cell = footprint_.content().cells[nextCell_];
    out += cellTag_;
    appendSpot(out, {footprint_.at().row + cell.row, footprint_.at().column + cell.column});
    out += "\" s=\"";
    appendDigits(out, numbers_.styles[cell.style]);
    out += '"';
    if (cell.value == SheetValue::blank || (cell.value == SheetValue::text && cell.textLength == 0)) {
        out += "/>";
    } else {
        const bool isText = cell.value == SheetValue::text;
        const bool isError = !isText && !std::isfinite(cell.number);
        out += isText ? " t=\"s\">" : isError ? " t=\"e\">" : ">";
        out += valueTag_;
        if (isText) {
            appendDigits(out, numbers_.stringsBefore + numbers_.strings[nextCell_]);
        } else if (isError) {
            out += "#NUM!";
        } else {
            appendCellNumber(out, cell.number);
        }
        out += endTags_;
    }
    ++nextCell_;
}

void SheetRows::finishRow(std::string& out) {
    const auto& cells = footprint_.content().cells;
    while (nextCell_ < cells.size() && cells[nextCell_].row == row_) {
        appendCell(out);
    }
    if (nextHeight_ != heights_.end() && nextHeight_->first == row_) {
        ++nextHeight_;
    }
    row_ = firstRow();
}

void SheetRows::appendRow(std::string& out) {
    out += '<';
    out += prefix_;
    out += "row r=\"";
    appendDigits(out, *next() + 1);
    out += '"';
    if (const std::optional<double> height = this->height()) {
        out += " ht=\"";
        appendDigits(out, *height);
        out += "\" customHeight=\"1\"";
    }
    if (!nextColumn()) {
        out += "/>";
        finishRow(out);
        return;
    }
    out += '>';
    finishRow(out);
    out += "</";
    out += prefix_;
    out += "row>";
}

}  // namespace vexa::frontend
