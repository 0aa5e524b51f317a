// Styles of a table's cells as styles of a worksheet, and the codes of its numbers: each is made once.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "backend/tables/layout/table_grid.h"
#include "frontend/export/font_widths.h"
#include "frontend/export/workbook/number_code.h"
#include "frontend/export/workbook/sheet_draft.h"

namespace vexa::frontend {

/// Index into the format codes of a sheet; 0 is General.
using CodeId = std::uint32_t;

/// Programs take some two hundred format codes of a workbook's own.
inline constexpr std::size_t mostFormatCodes = 200;
/// Of these, how many may have a text in them that the table shows with or for a number.
inline constexpr std::size_t mostFormatTexts = 150;

/// The format codes of one sheet.
class SheetCodes {
  public:
    /// The code of a format; nothing where there are too many.
    [[nodiscard]] std::optional<CodeId> of(const SheetNumber& number);
    /// With `marks` behind the number, or, where `shown` is given, that text instead of it.
    [[nodiscard]] std::optional<CodeId> of(const SheetNumber& number, std::string_view marks,
                                           std::optional<std::string_view> shown);
    [[nodiscard]] const std::string& text(CodeId id) const { return codes_[id]; }

  private:
    [[nodiscard]] std::optional<CodeId> intern(std::string code, std::size_t most);

    std::vector<std::string> codes_{1};
    std::unordered_map<std::string, CodeId> ids_{{"", 0}};
    std::unordered_map<std::uint32_t, std::optional<CodeId>> byFormat_;
};

/// A family as workbooks can hold it: a general one where its name is longer than programs take.
[[nodiscard]] std::string sheetFont(std::string_view font);
inline constexpr std::size_t longestFontName = 31;
/// Points that programs take.
[[nodiscard]] double sheetFontSize(double size);
inline constexpr double smallestFont = 1;
inline constexpr double largestFont = 409;

/// Which sides of a range a place of it stands at: top, right, bottom, left, as `SheetStyle::borders`.
using RangeSides = unsigned;
inline constexpr RangeSides topSide = 1;
inline constexpr RangeSides rightSide = 2;
inline constexpr RangeSides bottomSide = 4;
inline constexpr RangeSides leftSide = 8;
inline constexpr RangeSides allSides = 15;

enum class SheetWording : std::uint8_t {
    number,    ///< in one line
    text,      ///< wrapped
    insteadOf  ///< a text in the place of a number, aligned as that would be
};

/// The styles of one grid after the other.
class SheetStyles {
  public:
    SheetStyles(SheetDraft& draft, const SheetCodes& codes) : draft_(draft), codes_(codes) {}

    /// Begins a grid; styles are asked for by its numbers until the next one begins.
    void begin(const tables::TableGrid& grid);
    [[nodiscard]] SheetStyleId of(tables::ShownStyleId shown, RangeSides sides, SheetWording wording,
                                  CodeId code = 0);
    [[nodiscard]] const FontWidths& font(tables::ShownStyleId shown);

  private:
    struct Known {
        std::uint64_t key = UINT64_MAX;
        SheetStyleId id = 0;
    };
    [[nodiscard]] SheetStyle make(tables::ShownStyleId shown, RangeSides sides, SheetWording wording,
                                  CodeId code) const;

    SheetDraft& draft_;
    const SheetCodes& codes_;
    const tables::TableGrid* grid_ = nullptr;
    std::array<Known, 128> known_;  // where the key's hash says, the last one that was asked for
    std::vector<std::optional<FontWidths>> fonts_;
};

}  // namespace vexa::frontend
