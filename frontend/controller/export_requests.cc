#include "frontend/controller/export_requests.h"

#include "backend/platform/file_system.h"
#include "backend/text/character_set.h"
#include "backend/viewerxml/export_reader.h"
#include "backend/viewerxml/response_writer.h"
#include "frontend/controller/embedded_controller.h"
#include "frontend/controller/log_messages.h"
#include "frontend/controller/messages.h"
#include "frontend/export/export_document.h"

namespace vexa::frontend {

namespace {

void warn(const std::string& text) {
    constexpr BpErrorShow show = 2;
    BpError(userText(text), show, warningLevel);
}

/// Warnings are for who wants to hear of successes, reasons for who wants to hear of failures.
void report(const ExportOutcome& outcome, PrintRule print) {
    if (print == PrintRule::always) {
        for (const std::string& text : outcome.warnings) warn(text);
    }
    if (print != PrintRule::never && !outcome.reason.empty()) warn(outcome.reason);
}

ExportOutcome exportOf(const OpenDocuments& documents, const ExportRequest& request,
                       const ExportSurroundings& surroundings, Carrying carrying) {
    if (documents.active() == nullptr) {
        return refusedExport(ExportError::nothingOpen, request.namesActive() ? std::string() : request.name);
    }
    const ViewerDocument* const document =
        request.namesActive() ? documents.active() : documents.find(request.name);
    if (document == nullptr) return refusedExport(ExportError::noSuchDocument, request.name);
    ExportOutcome outcome = exportDocument(*document, request, surroundings);
    if (carrying == Carrying::dryRun && outcome.response.success) {
        const ExportResponse& response = outcome.response;
        const std::string& place = response.documentFile.empty() ? response.imageRoot : response.documentFile;
        say(noteLevel, messages::dryExport,
            {userText(shownName(*document)), userText(toNativePath(toUtf8(place)))});
    }
    return outcome;
}

}  // namespace

std::string exportDocuments(const OpenDocuments& documents, std::string_view specification,
                            const ExportSurroundings& surroundings, Carrying carrying) {
    const ReadExportSpec read = readExportSpec(specification);
    ExportOutcome outcome;
    PrintRule print = PrintRule::always;
    if (read.spec == nullptr) {
        outcome = refusedExport(ExportError::other, {}, toUtf8(read.error));
    } else {
        const ExportRequest request = exportRequestOf(*read.spec);
        ExportSurroundings these = surroundings;
        these.dryRun = carrying == Carrying::dryRun;
        print = request.print;
        outcome = exportOf(documents, request, these, carrying);
    }
    report(outcome, print);
    return writeExportResponse(outcome.response);
}

}  // namespace vexa::frontend
