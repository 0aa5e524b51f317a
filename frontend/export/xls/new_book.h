// What a workbook and a worksheet of a binary workbook are before anything is put into them.
#pragma once

#include <string>
#include <string_view>

namespace vexa::frontend::biff {

/// The records of a workbook with one sheet of this name, whose place is still to be filled in, from BOF to
/// EOF.
[[nodiscard]] std::string newGlobals(std::string_view sheet);

struct NewSheet {
    bool isSelected = false;
    std::string_view codeName;  ///< the record by which macros know the sheet; may be empty
};

/// The records of an empty worksheet.
[[nodiscard]] std::string newSheet(const NewSheet& sheet);

/// The record in a workbook that tells of a sheet: visible, its place yet to be filled in.
[[nodiscard]] std::string sheetEntry(std::string_view name);

}  // namespace vexa::frontend::biff
