// OUTPUT DISPLAY: lists the open documents in a table.

#include "module/document/commands.h"
#include "module/frame/document_command.h"
#include "module/frame/report.h"

namespace vexa {

namespace {

constexpr CommandIdentity kIdentity{"OUTPUT DISPLAY", "Output Display"_text, ""};

constexpr int kTranslatable = 1;
constexpr int kUserText = 0;
constexpr int kDimensionKind = 2;

/// Widths of the table's data column, in points.
constexpr int kNarrowestColumn = 150;
constexpr int kWidestColumn = 300;

void addDocument(BpDimension& names, int index, const VexawMsgOutputDocument& document) {
    BpCategory category = names.Category(BpNumber(index, BpProcedure::Count));
    if (document.name.empty()) {
        category.Cell(BpString("(unnamed)"_text, kTranslatable));
    } else {
        category.Cell(BpString(document.name.str(), kUserText));
    }
    if (document.active) {
        category.Note(BpString("Active output document"_text, kTranslatable));
    }
}

void buildTable(BpProcedure& procedure, const VexawMsgOutputControllerResponse& response) {
    const BpString title("Output Document"_text, kTranslatable);
    BpPivotTable table = procedure.PivotTable(title, BpString("", kUserText), true);
    table.Caption(title);
    table.MinDataColumnWidth(kNarrowestColumn);
    table.MaxDataColumnWidth(kWidestColumn);
    BpDimension names = table.Dimension(BpString("Name"_text, kTranslatable), kDimensionKind);
    names.Position(0, 1, 1, 1);
    for (int i = 0; i < response.GetOutputDocumentCount(); ++i) {
        if (const VexawMsgOutputDocument* const document = response.GetOutputDocumentItem(i)) {
            addDocument(names, i, *document);
        }
    }
}

}  // namespace

void outputDisplay() {
    DocumentCommand command(kIdentity, {});
    if (!command.parse()) {
        return;
    }
    const auto response =
        command.send(OutputControllerCommand::display, "", OutputDocumentMinimized::notGiven);
    if (!response) {
        return;
    }
    if (response->GetOutputDocumentCount() == 0) {
        reportPlain("No output documents are open."_text, kWarningLevel);
        return;
    }
    buildTable(command.procedure(), *response);
}

}  // namespace vexa
