// OUTPUT ACTIVATE: makes a named document the active one. The name is sent as it is, without a check of its
// own.

#include "module/document/commands.h"
#include "module/document/positional_name.h"
#include "module/frame/document_command.h"

namespace vexa {

namespace {

constexpr CommandIdentity kIdentity{"OUTPUT ACTIVATE", "Output Activate"_text, "OUTPUT ACTIVATE"};

}  // namespace

void outputActivate() {
    DocumentCommand command(kIdentity, kPositionalNameGrammar);
    if (!command.parse()) {
        return;
    }
    const auto settings =
        readPositionalName(command.leading().exportParamObj(), LoneEquals::isName, command.messages());
    if (!settings) {
        command.messages().WrongValueType("NAME", "", kOneName);
        return;
    }
    command.send(OutputControllerCommand::activate, settings->name, settings->minimized);
}

}  // namespace vexa
