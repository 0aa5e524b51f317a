// A worksheet while it is being filled: equal styles once, limits kept.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "frontend/export/export_report.h"
#include "frontend/export/workbook/sheet_content.h"

namespace vexa::frontend {

/// Cells are added by row, then by column. After a failure, which the report knows, nothing is added.
class SheetDraft {
  public:
    SheetDraft(const SheetLimits& limits, ExportReport& report) : limits_(limits), report_(report) {}

    [[nodiscard]] bool failed() const { return report_.failed(); }
    [[nodiscard]] const SheetLimits& limits() const { return limits_; }

    /// The id of a style; the same one for equal styles.
    [[nodiscard]] SheetStyleId intern(const SheetStyle& style);

    /// Whether so many rows and columns from `row` on are there; fails otherwise, naming the item.
    bool hasRoom(const ExportedItem& item, std::uint64_t row, std::uint64_t rows, std::uint64_t columns);

    /// Says that so many cells come, where they are many: making room for each of them takes twice the
    /// memory.
    void expect(std::size_t cells);
    void addBlank(std::uint32_t row, std::uint32_t column, SheetStyleId style);
    /// Returns the number of the cell.
    std::uint32_t addNumber(std::uint32_t row, std::uint32_t column, double number, SheetStyleId style);
    /// `raised` is shown behind the text, smaller and higher but for a blank that it begins with. Fails,
    /// naming the item, where a cell cannot hold both.
    std::uint32_t addText(const ExportedItem& item, std::uint32_t row, std::uint32_t column,
                          std::string_view text, std::string_view raised, SheetStyleId style);
    void merge(const SheetRange& range);
    void add(SheetPicture picture);
    /// A page begins at `row` when the sheet is printed.
    void breakPage(std::uint32_t row);

    [[nodiscard]] SheetContent& content() { return content_; }

  private:
    SheetCell& add(std::uint32_t row, std::uint32_t column, SheetValue value, SheetStyleId style);
    [[nodiscard]] std::size_t placeOfText(std::size_t begin);
    void failForLongText(const ExportedItem& item, std::size_t units);

    SheetLimits limits_;
    ExportReport& report_;
    SheetContent content_;
    std::unordered_multimap<std::size_t, SheetStyleId> byHash_;
    std::unordered_map<std::size_t, std::pair<std::size_t, std::size_t>> longTexts_;  // by hash: where
};

/// UTF-16 units that a text takes.
[[nodiscard]] std::size_t textUnits(std::string_view text);

/// Appends `text` as cells hold it: line ends are line feeds, and what no workbook can hold (control
/// characters, bytes that belong to no character) is U+FFFD.
void appendCellText(std::string& out, std::string_view text);

}  // namespace vexa::frontend
