#include "frontend/export/export_document.h"

#include <cstddef>
#include <new>
#include <utility>
#include <variant>

#include "backend/platform/file_system.h"
#include "backend/strings/dictionary.h"
#include "backend/strings/memory_text.h"
#include "backend/tables/layout/table_grid.h"
#include "backend/text/character_set.h"
#include "frontend/export/html/html_page.h"
#include "frontend/export/pdf/pdf_document.h"
#include "frontend/export/picture_files.h"
#include "frontend/export/report/report_page.h"
#include "frontend/export/slides/slides_export.h"
#include "frontend/export/text/text_page.h"
#include "frontend/export/word/word_document.h"
#include "frontend/export/xls/xls_workbook.h"
#include "frontend/export/xlsx/xlsx_workbook.h"

namespace vexa::frontend {

namespace {

ExportedParts partsOf(ExportedLayers asked) {
    switch (asked) {
        case ExportedLayers::all:
            return ExportedParts::all;
        case ExportedLayers::visible:
            return ExportedParts::visible;
        case ExportedLayers::printSetting:
            break;
    }
    return ExportedParts::printSetting;
}

ExportSelection selectionOf(const ExportRequest& request) {
    ExportSelection selection;
    selection.hiddenItems = request.items == ExportedItems::all;
    selection.layers = partsOf(request.layers);
    selection.views = partsOf(request.modelViews);
    return selection;
}

std::vector<ItemType> excludedBy(const ReportExport& report) {
    std::vector<ItemType> types;
    if (report.excludeTexts) types.push_back(ItemType::text);
    if (report.excludeLogs) types.push_back(ItemType::log);
    if (report.excludeNotes) types.push_back(ItemType::notes);
    if (report.excludeWarnings) types.push_back(ItemType::warning);
    return types;
}

/// The path of the document; the first one where there are several, and empty for pictures alone.
std::string documentFileOf(const ExportRequest& request) {
    std::string file;
    const auto take = [&file](const auto& target) {
        if (target && file.empty()) file = target->file;
    };
    take(request.doc);
    take(request.html);
    take(request.report);
    take(request.pdf);
    take(request.ppt);
    take(request.text);
    take(request.xls);
    take(request.xlsx);
    take(request.xlsm);
    return file;
}

std::optional<PageImageFormat> pageFormatOf(const ExportRequest& request) {
    if (request.html && request.html->imageFormat) return request.html->imageFormat;
    return request.text ? request.text->imageFormat : std::nullopt;
}

class Export {
  public:
    Export(const ViewerDocument& document, const ExportRequest& request,
           const ExportSurroundings& surroundings)
        : document_(document),
          request_(request),
          surroundings_(surroundings),
          documentFile_(documentFileOf(request)),
          pictures_(request, documentFile_, pageFormatOf(request), surroundings.styleFolders, files_,
                    report_) {}

    ExportOutcome carryOut() {
        const ExportPlan plan = planExport(document_.outline(), selectionOf(request_));
        if (isPossible(plan)) {
            pictures_.expect(plan);
            writeDocuments(plan);
            if (documentFile_.empty()) writePictures(plan);
            if (!report_.failed() && !surroundings_.dryRun) commit();
        }
        return outcome();
    }

  private:
    /// Everything that can be known before anything is written.
    bool isPossible(const ExportPlan& plan) {
        if (plan.documentIsEmpty) {
            report_.fail(ExportError::emptyDocument);
        } else if (plan.everythingIsHidden()) {
            report_.fail(ExportError::everythingHidden);
        } else if (documentFile_.empty() && plan.pictures == 0) {
            report_.fail(ExportError::noPictures);
        } else if (request_.pdf && !canWritePdf()) {
            report_.fail(ExportError::other,
                         translated("This build of the program cannot write PDF."_text.key()));
        } else {
            static_cast<void>(pictures_.checkFolders());
        }
        for (const ExportedItem& item : plan.items) checkSize(item);
        return !report_.failed();
    }

    /// A part of a table, or one that nobody can print, is no export of it.
    void checkSize(const ExportedItem& item) {
        // So many labels stand beside a value at most.
        constexpr tables::Place mostLabels = 64;
        const auto* const content = std::get_if<TableContent>(&item.item().content);
        if (content == nullptr || documentFile_.empty() ||
            content->table.data->placeCount() * mostLabels < tables::maximalEmptyPlaces) {
            return;
        }
        const tables::TableLayout layout(content->table);
        if (layout.fits()) return;
        report_.fail(
            ExportError::other,
            composed(
                "Item ^1 (^2) is too large a table to be exported: with its labels it has ^3 places, and as many as it has values and ^4 more are possible. Hide what is empty, or make several tables of it."_text,
                {std::to_string(item.number), item.shortLabel(), std::to_string(layout.places()),
                 std::to_string(tables::maximalEmptyPlaces)}));
    }

    void writeDocuments(const ExportPlan& plan) {
        if (request_.html) {
            write(request_.html->file, [&](const ByteSink& out) { return writeHtmlPage(task(plan), out); });
        }
        if (request_.report) {
            ExportSelection selection = selectionOf(request_);
            selection.excluded = excludedBy(*request_.report);
            const ExportPlan reported = planExport(document_.outline(), selection);
            write(request_.report->file,
                  [&](const ByteSink& out) { return writeReport(task(reported), out); });
        }
        if (request_.doc) writeWordDocument(task(plan));
        if (request_.pdf) {
            write(request_.pdf->file, [&](const ByteSink& out) { return writePdf(task(plan), out); });
        }
        if (request_.ppt) {
            write(request_.ppt->file, [&](const ByteSink& out) { return writeSlides(task(plan), out); });
        }
        if (request_.xls) writeXls(task(plan));
        if (request_.text) {
            write(request_.text->file, [&](const ByteSink& out) { return writeTextPage(task(plan), out); });
        }
        if (request_.xlsx) writeXlsx(task(plan), *request_.xlsx, WorkbookKind::xlsx);
        if (request_.xlsm) writeXlsx(task(plan), *request_.xlsm, WorkbookKind::xlsm);
    }

    void writePictures(const ExportPlan& plan) {
        std::size_t done = 0;
        const ExportTask task = this->task(plan);
        for (const ExportedItem& item : plan.items) {
            if (pictureOf(item) != nullptr) pictures_.add(item);
            if (!task.goesOn(++done)) return;
        }
        if (!report_.failed() && pictures_.count() == 0) {
            report_.fail(ExportError::other,
                         translated("None of the pictures could be exported."_text.key()));
        }
    }

    ExportTask task(const ExportPlan& plan) {
        return {document_, plan, request_, surroundings_, files_, report_, pictures_};
    }

    /// Begins the file of a document; `writer` writes its content.
    template <typename Writer>
    void write(const std::string& file, const Writer& writer) {
        if (report_.failed()) return;
        std::size_t number = 0;
        PackageResult result = files_.begin(file, number);
        if (result) result = writer(files_.sink(number));
        if (result) {
            files_.setMain(number);
        } else {
            report_.failToWrite(file, result);
        }
    }

    void commit() {
        const PackageResult result = files_.commit();
        for (const std::string& file : files_.withOtherRights()) {
            report_.note(composed(
                "The file ^1 has not kept its owner, group or permissions, because the system does not allow it. Check who may read it."_text,
                {toNativePath(file)}));
        }
        for (const std::string& file : files_.withOtherNames()) {
            report_.note(composed(
                "The file ^1 was replaced by a new one. Under its other names (hard links) the old one stays as it was."_text,
                {toNativePath(file)}));
        }
        if (!result)
            report_.failToWrite(documentFile_.empty() ? pictures_.shownRoot() : documentFile_, result);
    }

    [[nodiscard]] ExportOutcome outcome() const {
        if (report_.failed()) {
            ExportOutcome outcome = refusedExport(report_.error(), document_.name(), report_.reason());
            outcome.response.documentFile = fromUtf8(documentFile_);
            outcome.warnings = report_.logTexts();
            return outcome;
        }
        ExportOutcome outcome;
        ExportResponse& response = outcome.response;
        response.success = true;
        response.name = fromUtf8(document_.name());
        response.documentFile = fromUtf8(documentFile_);
        response.imageCount = static_cast<int>(pictures_.count());
        response.imageCountPresent = true;
        response.imageRoot = fromUtf8(pictures_.shownRoot());
        response.imageFormat = pictures_.shownFormat();
        for (const CodedWarning& each : report_.warnings()) {
            response.warnings[static_cast<std::size_t>(each.code)].push_back(
                {std::to_string(each.item), fromUtf8(each.label)});
        }
        outcome.warnings = report_.logTexts();
        return outcome;
    }

    const ViewerDocument& document_;
    const ExportRequest& request_;
    const ExportSurroundings& surroundings_;
    std::string documentFile_;
    OutputFiles files_;
    ExportReport report_;
    PictureFiles pictures_;
};

}  // namespace

ExportOutcome exportDocument(const ViewerDocument& document, const ExportRequest& request,
                             const ExportSurroundings& surroundings) {
    try {
        return Export(document, request, surroundings).carryOut();
    } catch (const std::bad_alloc&) {
        return refusedExport(ExportError::other, document.name(), translated(notEnoughMemory.key()));
    }
}

ExportOutcome refusedExport(ExportError error, const std::string& name, std::string reason) {
    ExportOutcome outcome;
    outcome.response.errorCode = static_cast<int>(error);
    outcome.response.name = fromUtf8(name);
    outcome.reason = std::move(reason);
    return outcome;
}

}  // namespace vexa::frontend
