#include "module/export/export_response.h"

#include <exception>
#include <iterator>
#include <utility>
#include <vector>

#include "backend/adapter/client_adapter.h"
#include "module/frame/report.h"

namespace vexa {

namespace {

constexpr SystemText kFailed = "Failed to export output..."_text;
constexpr SystemText kFailedBecause = "Failed to export output ^1..."_text;

constexpr int kTranslatable = 1;
constexpr int kNotTranslatable = 0;

/// What an error code's message has in the place of ^1.
enum class Argument { none, documentName, documentFile, imageRoot, unspecified };

struct ErrorText {
    SystemText text;
    Argument argument = Argument::none;
};

/// By error code, from 1 on.
constexpr ErrorText kErrors[] = {
    {"The OUTPUT EXPORT command requires an open Viewer document."_text},
    {"The specified Viewer document ^1 does not exist."_text, Argument::documentName},
    {"The Viewer document is empty. There is nothing to export."_text},
    {"It was requested that all visible items be exported but..."_text},
    {"It was requested that only graphics be exported but no graphics were found."_text},
    {"^1 not a valid file name..."_text, Argument::documentFile},
    {"^1 is not a valid root name."_text, Argument::imageRoot},
    {"Enhanced Metafile (EMF) format is available only on Windows systems."_text},
    {"PowerPoint (PPT) format is available only on Windows systems."_text},
    {"In order to export to PowerPoint (PPT) format, PowerPoint must be installed."_text},
    {"xlsMaxColumnsLimitExceeded..."_text},
    {"xlsMaxCellCharacterLimitExceeded..."_text},
    {"maxSheetNameCharacterLimitExceeded..."_text},
    {"xlsSheetNameInvalid..."_text},
    {kFailedBecause, Argument::unspecified},
};

struct WarningText {
    ResponseSpec::WARNING_CODE code = {};
    SystemText text;
};

constexpr WarningText kWarnings[] = {
    {ResponseSpec::WARNING_CODE::LONG_ROW_LABEL,
     "The following pivot tables contain a very long row label..."_text},
    {ResponseSpec::WARNING_CODE::MAX_COLUMNS, "maxColLimitExceeded..."_text},
    {ResponseSpec::WARNING_CODE::CELL_CHARACTERS, "cellCharacterLimitExceeded..."_text},
};

void reportFailure(std::string_view reason) { reportWithArgument(kFailedBecause, reason, kErrorLevel); }

/// One warning a code, with the tables that it is about.
void reportWarnings(const ResponseSpec& response) {
    for (const WarningText& warning : kWarnings) {
        std::vector<std::string_view> tables;
        for (const ResponseSpec::Warning& each : response.getWarnings(warning.code)) {
            tables.push_back(each.second);
        }
        if (!tables.empty()) {
            reportList(warning.text, tables, kWarningLevel);
        }
    }
}

BpNumber imageCount(const ResponseSpec& response) {
    return {static_cast<double>(response.getImageCount()), BpProcedure::Count};
}

}  // namespace

ExportReporting::ExportReporting(BpProcedure& procedure, ExportGlobalSpec::PRINT_OPTION print,
                                 std::string documentFile)
    : procedure_(procedure), print_(print), documentFile_(std::move(documentFile)) {
    try {
        xml_.emplace();
    } catch (const std::exception& failure) {
        reportFailure(failure.what());
    } catch (...) {
        reportPlain(kFailed, kErrorLevel);
    }
}

void ExportReporting::send(const std::string& specification) const {
    if (!xml_) {
        return;
    }
    ClientAdapter* const adapter = GetAdapter();
    if (adapter == nullptr) {
        reportNotImplemented("OUTPUT EXPORT");
        return;
    }
    if (specification.empty()) {
        reportPlain(kFailed, kErrorLevel);
        return;
    }
    const std::string answer = adapter->exchangeExport(specification);
    if (answer.empty()) {
        reportFailure("Response not received from Client");
        return;
    }
    ResponseSpec response;
    if (response.processResponse(answer)) {
        report(response);
    } else {
        reportFailure(response.getParserError());
    }
}

void ExportReporting::report(const ResponseSpec& response) const {
    using Print = ExportGlobalSpec::PRINT_OPTION;
    if (!response.getSuccessCode() || print_ != Print::ALWAYS) {
        // Also of a success, which has no error code as a rule.
        if (print_ != Print::NEVER) {
            reportError(response);
        }
        return;
    }
    if (response.warningsFound()) {
        reportWarnings(response);
    }
    addNotes(response);
    buildSummary(response);
}

void ExportReporting::reportError(const ResponseSpec& response) const {
    const int code = response.getErrorCode();
    if (code < 1 || code > static_cast<int>(std::size(kErrors))) {
        return;
    }
    const ErrorText& error = kErrors[code - 1];
    switch (error.argument) {
        case Argument::none:
            reportPlain(error.text, kErrorLevel);
            return;
        case Argument::documentName:
            reportWithArgument(error.text, response.getName(), kErrorLevel);
            return;
        case Argument::documentFile:
            reportWithArgument(error.text, documentFile_, kErrorLevel);
            return;
        case Argument::imageRoot:
            reportWithArgument(error.text, imageRoot_, kErrorLevel);
            return;
        case Argument::unspecified:
            reportWithArgument(error.text, "Unspecified error", kErrorLevel);
            return;
    }
}

void ExportReporting::addNotes(const ResponseSpec& response) const {
    constexpr int kLevel = 2;
    const auto add = [this](SystemText label, const BpCellText& value) {
        procedure_.AddNotes(kLevel, BpString(label, kTranslatable), value);
    };
    if (!response.getName().empty()) {
        add("Viewer"_text, BpString(response.getName(), kNotTranslatable));
    }
    if (!response.getDocumentFile().empty()) {
        add("Document File"_text, BpString(documentFile_, kNotTranslatable));
    }
    add("Image File Count"_text, imageCount(response));
    if (!response.getImageRoot().empty()) {
        add("Image File Root Name"_text, BpString(imageRoot_, kNotTranslatable));
    }
}

void ExportReporting::buildSummary(const ResponseSpec& response) const {
    constexpr int kWidestColumn = 200;
    constexpr int kDimensionKind = 2;
    constexpr int kSort = 2;
    const auto label = [](SystemText text) { return BpString(text, kTranslatable); };
    const auto value = [](std::string_view text) { return BpString(text, kNotTranslatable); };
    BpPivotTable table = procedure_.PivotTable(label("Export Summary"_text),
                                               BpString("ExportSummary", kNotTranslatable), true);
    table.MaxDataColumnWidth(kWidestColumn);
    BpDimension contents = table.Dimension(label("Contents"_text), kDimensionKind);
    contents.Position(0, 1, 1, 0);
    contents.Category(label("Viewer"_text)).Cell(value(response.getName()));
    if (!response.getDocumentFile().empty()) {
        contents.Category(label("Document File"_text)).Cell(value(documentFile_));
    }
    const bool hasRoot = !response.getImageRoot().empty();
    if (!hasRoot && !response.isImageCountPresent()) {
        return;
    }
    BpGroup images = contents.Group(label("Image Files"_text), true, kSort);
    images.Category(label("E60352"_text)).Cell(imageCount(response));
    if (hasRoot) {
        images.Category(label("Root Name"_text)).Cell(value(imageRoot_));
    }
    if (hasRoot || !response.getImageFormat().empty()) {
        images.Category(label("Format"_text)).Cell(value(response.getImageFormat()));
    }
}

}  // namespace vexa
