// A workbook in Office Open XML as something that an export goes into: a new one, or one that is there.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/export/xlsx/sheet_survey.h"
#include "frontend/export/xlsx/workbook_package.h"
#include "frontend/export/xlsx/workbook_part.h"

namespace vexa::frontend {

enum class WorkbookKind { xlsx, xlsm };

/// What a new workbook says of itself. UTF-8.
struct WorkbookProperties {
    std::string title;
    std::string language;  ///< a language tag
};

class WorkbookFile {
  public:
    /// A workbook without sheets; one of macros has a project without code for this sheet.
    PackageResult begin(WorkbookKind kind, const WorkbookProperties& properties);
    /// Takes the bytes of a file. Refuses what is no workbook, is protected by a password, or of another
    /// format; the detail says so.
    PackageResult open(std::string bytes);

    /// Whether it is signed: any change makes the signature invalid.
    [[nodiscard]] bool isSigned() const { return isSigned_; }
    [[nodiscard]] bool hasMacroType() const;
    /// Gives an ordinary workbook the type of one with macros.
    void takeMacroType();

    [[nodiscard]] const WorkbookPart& list() const { return list_; }
    [[nodiscard]] WorkbookPart& list() { return list_; }
    [[nodiscard]] WorkbookPackage& package() { return package_; }

    /// Adds an empty sheet behind the others, and gives the name of its part.
    PackageResult addSheet(std::string_view name, std::string& part);
    /// The part of a sheet that is there; empty where it is none of rows and columns.
    PackageResult sheetPart(std::size_t sheet, std::string& part) const;
    /// Puts an empty sheet in the place of one that is there, and gives the name of its part. What nothing
    /// else refers to goes with the old one.
    PackageResult replaceSheet(std::size_t sheet, std::string& part);
    /// The ranges that tables of a sheet take, with their names. Of a pivot table all rows are headers.
    struct Table {
        std::string name;
        SheetRange range;
        std::uint32_t headerRows = 1;
        std::uint32_t totalRows = 0;
    };
    PackageResult tables(const std::string& part, const SheetSurvey& survey,
                         std::vector<Table>& tables) const;

    /// The name of a part that the workbook has one of: "styles", "sharedStrings". Where it has none, one
    /// with this content and type is made.
    PackageResult sharedPart(std::string_view relation, std::string_view content, std::string_view type,
                             std::string& part);
    /// Leaves out the order of calculation, which programs make anew.
    PackageResult dropCalculationOrder();
    /// Writes the file.
    PackageResult write(const ByteSink& sink);

  private:
    PackageResult openParts();
    PackageResult addPivotTable(const std::string& part, std::vector<Table>& tables) const;
    PackageResult countSheetsInProperties(std::string_view added);
    PackageResult dropUnreachable(const std::set<std::string>& before);

    WorkbookPackage package_;
    WorkbookPart list_;
    std::string main_;  ///< the part of the workbook
    bool isSigned_ = false;
};

}  // namespace vexa::frontend
