#include "frontend/export/xlsx/sheet_insertion.h"

#include <algorithm>
#include <utility>

#include "backend/strings/dictionary.h"
#include "frontend/export/workbook/day_numbers.h"
#include "frontend/export/workbook/sheet_name.h"
#include "frontend/export/workbook/sheet_place.h"
#include "frontend/export/workbook/workbook_refusal.h"
#include "frontend/export/xlsx/shared_strings.h"
#include "frontend/export/xlsx/sheet_change.h"
#include "frontend/export/xlsx/sheet_drawing.h"
#include "frontend/export/xlsx/style_table.h"

namespace vexa::frontend {
namespace {

constexpr std::string_view stylesType =
    "application/vnd.openxmlformats-officedocument.spreadsheetml.styles+xml";
constexpr std::string_view stringsType =
    "application/vnd.openxmlformats-officedocument.spreadsheetml.sharedStrings+xml";

class SheetInsertion {
  public:
    SheetInsertion(WorkbookFile& workbook, SheetContent content, const WorkbookExport& options,
                   ExportReport& report)
        : workbook_(workbook), content_(std::move(content)), options_(options), report_(report) {}

    bool carryOut() { return chooseSheet() && choosePlace() && addSheetContent() && finishWorkbook(); }

  private:
    bool check(const PackageResult& result) { return checkWorkbook(result, options_.file, report_); }

    bool chooseSheet() {
        const std::optional<std::size_t> found = workbook_.list().find(options_.sheet);
        if (!found) {
            return checkSheetName(options_.sheet, report_) &&
                   check(workbook_.addSheet(options_.sheet, sheet_)) && surveyIt();
        }
        if (options_.operation == SheetOperation::createSheet) {
            isReplaced_ = true;
            return check(workbook_.replaceSheet(*found, sheet_)) && surveyIt();
        }
        if (!check(workbook_.sheetPart(*found, sheet_))) {
            return false;
        }
        if (sheet_.empty()) {
            failForChartSheet(options_.sheet, options_.file, report_);
            return false;
        }
        isModified_ = true;
        return surveyIt();
    }

    bool surveyIt() {
        WorkbookPackage& package = workbook_.package();
        if (!check(surveySheet(package.source(sheet_, marks_), survey_, marks_, firstRow()))) {
            return false;
        }
        std::vector<PartRelation> relations;
        if (!check(package.relations(sheet_, relations))) {
            return false;
        }
        for (const PartRelation& relation : relations) {
            if (relation.id == survey_.drawing && relation.type == "drawing") {
                drawing_ = relation.target;
            }
        }
        if (!drawing_.empty() && !check(surveyDrawing(package, drawing_, survey_))) {
            return false;
        }
        if (!check(workbook_.tables(sheet_, survey_, tables_))) {
            return false;
        }
        for (const WorkbookFile::Table& table : tables_) {
            survey_.rows = std::max(survey_.rows, table.range.row + table.range.rows);
            survey_.columns = std::max(survey_.columns, table.range.column + table.range.columns);
        }
        return true;
    }

    /// The first row that the export may touch, as far as that is known before the sheet is.
    [[nodiscard]] std::uint32_t firstRow() const {
        if (options_.location == SheetLocation::lastRow) {
            return officeSheetLimits.rows;
        }
        const auto place = options_.location == SheetLocation::startCell ? parseSheetPlace(options_.startCell)
                                                                         : std::nullopt;
        return place && place->row < officeSheetLimits.rows ? static_cast<std::uint32_t>(place->row) : 0;
    }

    bool choosePlace() {
        SheetPlace place;
        if (options_.location == SheetLocation::startCell) {
            const auto start = startPlace(options_.startCell, officeSheetLimits, report_);
            if (!start) {
                return false;
            }
            place = *start;
        } else if (options_.location == SheetLocation::lastColumn) {
            place.column = survey_.columns == 0 ? 0 : std::uint64_t{survey_.columns} + 1;
        } else {
            place.row = survey_.rows == 0 ? 0 : std::uint64_t{survey_.rows} + 1;
        }
        if (!fitsFrom(place, content_.rows, content_.columns, officeSheetLimits, report_)) {
            return false;
        }
        at_ = {static_cast<std::uint32_t>(place.row), static_cast<std::uint32_t>(place.column)};
        return leavesTables();
    }

    /// A table of the sheet goes by its first and last row, and has no merged places.
    bool leavesTables() {
        const SheetFootprint footprint(content_, at_);
        for (const WorkbookFile::Table& table : tables_) {
            SheetRange head = table.range;
            head.rows = std::min(table.headerRows, table.range.rows);
            SheetRange foot = table.range;
            foot.rows = std::min(table.totalRows, table.range.rows);
            foot.row += table.range.rows - foot.rows;
            const bool merges =
                std::any_of(content_.merged.begin(), content_.merged.end(), [&](SheetRange range) {
                    range.row += at_.row;
                    range.column += at_.column;
                    return overlap(range, table.range);
                });
            const bool touches =
                (head.rows > 0 && footprint.touches(head)) || (foot.rows > 0 && footprint.touches(foot));
            if (merges || touches) {
                report_.fail(
                    ExportError::other,
                    composed(
                        "The export would destroy the table ^1 of the sheet ^2. Choose another place."_text,
                        {table.name, options_.sheet}));
                return false;
            }
        }
        return true;
    }

    bool addSheetContent() {
        WorkbookPackage& package = workbook_.package();
        const SheetFootprint footprint(content_, at_);
        if (workbook_.list().countsFrom1904()) {
            countDaysFrom1904(content_, report_);
        }
        CellNumbers numbers;
        std::string newDrawing;
        if (!addStyles(numbers) || !addTexts(numbers)) {
            return false;
        }
        if (!content_.pictures.empty()) {
            if (drawing_.empty() && !check(addDrawing(package, sheet_, drawing_, newDrawing))) {
                return false;
            }
            if (!check(addPictures(package, drawing_, footprint))) {
                return false;
            }
        }
        DeflateStream out(workbookLimits.entryBytes, 0, levelFor(package.bytesOf(sheet_)));
        SheetChange change{footprint, numbers, survey_, newDrawing, {}};
        if (!changesFormulas(footprint, survey_)) {
            change.kept =
                keptRows(survey_, package.packed(sheet_), at_.row, at_.row + std::max(content_.rows, 1U));
        }
        std::vector<PackedBlocks> leftOut;
        for (const KeptRows& kept : change.kept) {
            leftOut.push_back(kept.blocks);
        }
        return check(changeSheet(package.source(sheet_, std::move(leftOut)), change, out, changed_)) &&
               replace(sheet_, out);
    }

    /// What is large is packed swiftly rather than as small as can be.
    [[nodiscard]] int levelFor(std::uint64_t bytes) const {
        constexpr std::uint64_t large = 16U << 20U;
        constexpr std::size_t manyCells = 5'000;
        return bytes > large                       ? quickDeflateLevel
               : content_.cells.size() > manyCells ? swiftDeflateLevel
                                                   : usualDeflateLevel;
    }

    bool replace(const std::string& part, DeflateStream& out) {
        ZipEntry entry;
        std::string packed;
        if (!check(out.finish(entry, packed))) {
            return false;
        }
        workbook_.package().setPacked(part, std::move(entry), std::move(packed));
        return true;
    }

    bool addStyles(CellNumbers& numbers) {
        std::string part;
        std::string xml;
        StyleTable styles;
        WorkbookPackage& package = workbook_.package();
        if (!check(workbook_.sharedPart("styles", plainStyles(), stylesType, part)) ||
            !check(package.read(part, xml, mostOfATree)) || !check(styles.parse(std::move(xml)))) {
            return false;
        }
        if (!styles.add(content_.styles, numbers.styles)) {
            return check({PackageProblem::beyondLimits, "the number of styles"_text});
        }
        package.set(part, styles.text());
        return true;
    }

    bool addTexts(CellNumbers& numbers) {
        SharedStrings strings;
        numbers.strings.assign(content_.cells.size(), 0);
        for (std::size_t i = 0; i < content_.cells.size(); ++i) {
            const SheetCell& cell = content_.cells[i];
            if (cell.value == SheetValue::text && cell.textLength > 0) {
                numbers.strings[i] = strings.add(content_, cell);
            }
        }
        if (strings.isEmpty()) {
            return true;
        }
        std::string part;
        if (!check(workbook_.sharedPart("sharedStrings", noSharedStrings(), stringsType, part))) {
            return false;
        }
        DeflateStream out(workbookLimits.entryBytes, 0, levelFor(workbook_.package().bytesOf(part)));
        return check(strings.write(workbook_.package().source(part), out, numbers.stringsBefore)) &&
               replace(part, out);
    }

    bool finishWorkbook() {
        const bool mayMatter = isReplaced_ || changed_.overwrites || (isModified_ && survey_.hasFormulas);
        if (mayMatter) {
            workbook_.list().calculateOnLoad();
        }
        if (changed_.cutsArrays) {
            noteCutFormulas(options_.sheet, report_);
        }
        return !(isReplaced_ || changed_.dropsFormulas) || check(workbook_.dropCalculationOrder());
    }

    WorkbookFile& workbook_;
    SheetContent content_;
    const WorkbookExport& options_;
    ExportReport& report_;
    bool isReplaced_ = false;
    bool isModified_ = false;
    std::string sheet_;    ///< the part
    std::string drawing_;  ///< of the sheet; empty without one
    PackedMarks marks_;
    SheetSurvey survey_;
    std::vector<WorkbookFile::Table> tables_;
    SheetSpot at_;
    SheetChanged changed_;
};

}  // namespace

bool insertSheet(WorkbookFile& workbook, SheetContent content, const WorkbookExport& options,
                 ExportReport& report) {
    return SheetInsertion(workbook, std::move(content), options, report).carryOut();
}

}  // namespace vexa::frontend
