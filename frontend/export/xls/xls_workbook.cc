#include "frontend/export/xls/xls_workbook.h"

#include <algorithm>

#include "backend/platform/file_system.h"
#include "backend/strings/dictionary.h"
#include "frontend/export/workbook/day_numbers.h"
#include "frontend/export/workbook/sheet_builder.h"
#include "frontend/export/workbook/sheet_name.h"
#include "frontend/export/workbook/sheet_place.h"
#include "frontend/export/workbook/workbook_refusal.h"
#include "frontend/export/xls/binary_book.h"

namespace vexa::frontend {

namespace {

using biff::BinaryBook;
using biff::SheetExtent;
using biff::SheetStream;

class XlsWriter {
  public:
    explicit XlsWriter(const ExportTask& task) : task_(task), request_(*task.request.xls) {}

    void carryOut() {
        if (!makeBook()) return;
        std::size_t file = 0;
        PackageResult result = task_.files.begin(request_.file, file);
        if (result) result = book_.write(task_.files.sink(file));
        if (result) {
            task_.files.setMain(file);
        } else {
            task_.report.failToWrite(request_.file, result);
        }
    }

  private:
    bool makeBook() {
        if (!openBook() || !checkRequest()) return false;
        const auto sheet = findSheet();
        if (!sheet) return false;
        SheetStream stream(book_.styles().digitWidth());
        if (!succeeds(book_.openSheet(*sheet, stream))) return false;
        const auto place = placeOn(stream.used());
        if (!place || !fill(stream, *place)) return false;
        if (stream.cutsFormulas()) noteCutFormulas(request_.sheet, task_.report);
        book_.closeSheet(*sheet, stream);
        return succeeds(book_.finish());
    }

    /// What can be known to be wrong before anything is made.
    bool checkRequest() {
        const bool isThere =
            book_.findSheet(request_.sheet).has_value() && request_.operation != SheetOperation::createFile;
        const bool startsAtCell = request_.location == SheetLocation::startCell;
        return (isThere || checkSheetName(request_.sheet, task_.report)) &&
               (!startsAtCell || startPlace(request_.startCell, binarySheetLimits, task_.report));
    }

    bool succeeds(const PackageResult& result) { return checkWorkbook(result, request_.file, task_.report); }

    bool openBook() {
        if (request_.operation == SheetOperation::createFile ||
            !FileSystem::current().isFile(request_.file)) {
            book_.makeNew(request_.sheet, documentTitle(task_.document));
            return true;
        }
        std::string bytes;
        const FileResult read = FileSystem::current().read(request_.file, bytes, CompoundLimits{}.fileBytes);
        if (!read) return succeeds(PackageResult::ofFile(PackageProblem::cannotWrite, read));
        if (!succeeds(book_.read(bytes))) return false;
        if (book_.isSigned()) {
            noteBrokenSignature(request_.file, task_.report);
        }
        return true;
    }

    std::optional<std::size_t> findSheet() {
        const auto found = book_.findSheet(request_.sheet);
        if (!found) return book_.addSheet(request_.sheet);
        if (!book_.isWorksheet(*found)) {
            failForChartSheet(request_.sheet, request_.file, task_.report);
            return std::nullopt;
        }
        if (request_.operation != SheetOperation::createSheet) return found;
        return succeeds(book_.emptySheet(*found)) ? found : std::nullopt;
    }

    /// One row or column stays free between what is there and what comes.
    std::optional<SheetPlace> placeOn(const SheetExtent& used) {
        switch (request_.location) {
            case SheetLocation::startCell:
                return startPlace(request_.startCell, binarySheetLimits, task_.report);
            case SheetLocation::lastColumn:
                return SheetPlace{0, used.columns == 0 ? 0 : used.columns + 1ULL};
            case SheetLocation::lastRow:
                break;
        }
        return SheetPlace{used.rows == 0 ? 0 : used.rows + 1ULL, 0};
    }

    bool fill(SheetStream& stream, const SheetPlace& place) {
        SheetContent content = buildSheet(task_, binarySheetLimits, request_.notesAndCaptions);
        if (task_.report.failed() ||
            !fitsFrom(place, content.rows, content.columns, binarySheetLimits, task_.report)) {
            return false;
        }
        if (book_.countsFrom1904()) countDaysFrom1904(content, task_.report);
        const std::vector<biff::CellFormat> formats = book_.styles().add(content, task_.report);
        return succeeds(stream.place({content, static_cast<std::uint32_t>(place.row),
                                      static_cast<std::uint32_t>(place.column), formats, book_.strings()},
                                     book_.drawings()));
    }

    const ExportTask& task_;
    const WorkbookExport& request_;
    BinaryBook book_;
};

}  // namespace

void writeXls(const ExportTask& task) { XlsWriter(task).carryOut(); }

}  // namespace vexa::frontend
