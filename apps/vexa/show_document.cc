#include <iostream>
#include <string_view>

#include "apps/vexa/actions.h"
#include "apps/vexa/complaints.h"
#include "apps/vexa/document_access.h"
#include "apps/vexa/exit_status.h"
#include "apps/vexa/outline_text.h"
#include "apps/vexa/terminal_look.h"
#include "backend/strings/dictionary.h"
#include "frontend/import/results_writer.h"
#include "frontend/store/password.h"

namespace vexa::program {

namespace {

rendering::RenderOptions renderOptions() {
    const TerminalLook look = terminalLook();
    rendering::RenderOptions options;
    options.width = look.width;
    options.styled = look.styledResults;
    options.colors = look.resultColors;
    return options;
}

/// What is asked for; false, after a complaint, when there is no such item.
bool print(const DocumentChoices& choices, const frontend::ViewerDocument& document) {
    const frontend::Outline& outline = document.outline();
    if (choices.asJson) {
        frontend::writeResults(outline, document.name(), TableSurroundings().words,
                               [](std::string_view piece) { std::cout << piece; });
        return true;
    }
    if (!choices.item) {
        std::cout << outlineText(outline);
        return true;
    }
    const frontend::OutlineNode* const node = findNumber(outline, *choices.item);
    if (node == nullptr) {
        complain("The document ^1 has no item ^2. Its items have the numbers from 1 to ^3."_text,
                 {choices.document, std::to_string(*choices.item), std::to_string(outline.size())},
                 choices.document);
        return false;
    }
    writeItem(outline, *node, renderOptions(), [](std::string_view piece) { std::cout << piece; });
    return true;
}

}  // namespace

int showDocument(const Options& options) {
    if (!openForUser(options.session)) {
        return exit_status::kUsage;
    }
    OpenedDocument opened = openForUser(options.document);
    frontend::wipe(opened.passwordForm);
    if (opened.document == nullptr) {
        return opened.exitStatus;
    }
    if (!print(options.document, *opened.document)) {
        return exit_status::kUsage;
    }
    return exit_status::kSuccess;
}

}  // namespace vexa::program
