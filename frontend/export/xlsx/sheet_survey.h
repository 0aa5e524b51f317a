// What a worksheet has, found out in one pass over its XML before it is changed in a second one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/export/workbook/cell_reference.h"
#include "frontend/export/workbook/sheet_content.h"
#include "frontend/export/xlsx/xml_stream.h"
#include "frontend/package/marked_source.h"

namespace vexa::frontend {

/// A formula that cells share: the one that holds its text.
struct SharedFormula {
    SheetSpot at;
    std::string text;
};
/// A formula whose values stand in a range.
struct ArrayFormula {
    SheetSpot at;
    SheetRange range;
};

/// A row that begins behind a mark of the packed bytes.
struct RowMark {
    PackedMark packed;
    std::uint64_t at = 0;   ///< where the row begins, bytes of the XML
    std::uint32_t row = 0;  ///< its number, from 0
};

struct SheetSurvey {
    std::string prefix;  ///< of the elements, with its colon; mostly empty
    /// Names, without prefix, of the elements directly in the sheet.
    std::set<std::string, std::less<>> elements;
    /// How many rows and columns values and merged places take, counted from the first ones.
    std::uint32_t rows = 0;
    std::uint32_t columns = 0;
    bool hasFormulas = false;
    double rowHeight = usualRowHeight;        ///< of rows that say nothing, points
    double columnWidth = 64;                  ///< of columns that say nothing, pixels
    std::map<std::uint32_t, double> heights;  ///< of rows that say one, points
    std::map<std::uint32_t, double> widths;   ///< of columns, up to the next one here; pixels
    std::string codeName;                     ///< what macros call it
    std::string drawing;                      ///< ids of relations
    std::vector<std::string> tables;
    std::map<std::string, SharedFormula, std::less<>> shared;  ///< by their index
    std::vector<ArrayFormula> arrays;
    std::vector<RowMark> marks;  ///< in their order, a row at most behind each
};

/// Reads a worksheet. Refuses what is none, one of the strict kind, and one whose rows or cells do not
/// follow each other.
PackageResult surveySheet(const ByteSource& source, SheetSurvey& survey);
/// The same with marks, of a source that makes them. They can be gone on from only where that can be of use:
/// at the last one that has no rows before it from `row` on, and at the last one of all.
PackageResult surveySheet(const ByteSource& source, SheetSurvey& survey, PackedMarks& marks,
                          std::uint32_t row);

/// The number of the row, from 0, or of the column that `value` names; that behind `last` where there is no
/// value. Nothing where it does not come behind `last`, or is not on a sheet.
[[nodiscard]] std::optional<std::uint32_t> nextRow(std::optional<std::string_view> value, std::int64_t last);
[[nodiscard]] std::optional<std::uint32_t> nextColumn(std::optional<std::string_view> value,
                                                      std::int64_t last);

/// Pixels that a width of a workbook's column stands for, and back.
inline constexpr double pixelsOfWidth = 7;

}  // namespace vexa::frontend
