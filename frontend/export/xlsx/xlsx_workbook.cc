#include "frontend/export/xlsx/xlsx_workbook.h"

#include <utility>

#include "backend/platform/file_system.h"
#include "backend/strings/dictionary.h"
#include "frontend/export/office/office_values.h"
#include "frontend/export/workbook/sheet_builder.h"
#include "frontend/export/workbook/sheet_name.h"
#include "frontend/export/workbook/sheet_place.h"
#include "frontend/export/workbook/workbook_refusal.h"
#include "frontend/export/xlsx/sheet_insertion.h"

namespace vexa::frontend {
namespace {

bool endsWithLetters(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && lowerCase(text.substr(text.size() - end.size())) == end;
}

class WorkbookWriter {
  public:
    WorkbookWriter(const ExportTask& task, const WorkbookExport& options, WorkbookKind kind)
        : task_(task), options_(options), kind_(kind) {}

    void carryOut() {
        if (!openWorkbook() || !checkRequest()) {
            return;
        }
        SheetContent content = buildSheet(task_, officeSheetLimits, options_.notesAndCaptions);
        if (!task_.report.failed() && insertSheet(workbook_, std::move(content), options_, task_.report)) {
            writeFile();
        }
    }

  private:
    bool check(const PackageResult& result) { return checkWorkbook(result, options_.file, task_.report); }

    /// What can be known to be wrong before anything is made.
    bool checkRequest() {
        const bool isThere = workbook_.list().find(options_.sheet).has_value();
        const bool startsAtCell = options_.location == SheetLocation::startCell;
        return (isThere || checkSheetName(options_.sheet, task_.report)) &&
               (!startsAtCell || startPlace(options_.startCell, officeSheetLimits, task_.report));
    }

    bool openWorkbook() {
        FileSystem& files = FileSystem::current();
        const bool isOld = options_.operation != SheetOperation::createFile && files.isFile(options_.file);
        if (!isOld) {
            return check(workbook_.begin(
                kind_, {documentTitle(task_.document), officeLanguage(task_.surroundings.language)}));
        }
        std::string bytes;
        const FileResult read = files.read(options_.file, bytes, workbookLimits.fileBytes);
        if (!check(PackageResult::ofFile(PackageProblem::cannotWrite, read)) ||
            !check(workbook_.open(std::move(bytes)))) {
            return false;
        }
        if (kind_ == WorkbookKind::xlsm && endsWithLetters(options_.file, ".xlsm")) {
            workbook_.takeMacroType();
        } else if (workbook_.hasMacroType() && endsWithLetters(options_.file, ".xlsx")) {
            task_.report.note(composed(
                "The workbook ^1 holds macros, which programs expect in a file whose name ends in .xlsm."_text,
                {toNativePath(options_.file)}));
        }
        return true;
    }

    void writeFile() {
        if (workbook_.isSigned()) {
            noteBrokenSignature(options_.file, task_.report);
        }
        std::size_t file = 0;
        PackageResult result = task_.files.begin(options_.file, file);
        if (result) {
            result = workbook_.write(task_.files.sink(file));
        }
        if (result) {
            task_.files.setMain(file);
        } else {
            task_.report.failToWrite(options_.file, result);
        }
    }

    const ExportTask& task_;
    const WorkbookExport& options_;
    WorkbookKind kind_;
    WorkbookFile workbook_;
};

}  // namespace

void writeXlsx(const ExportTask& task, const WorkbookExport& options, WorkbookKind kind) {
    WorkbookWriter(task, options, kind).carryOut();
}

}  // namespace vexa::frontend
