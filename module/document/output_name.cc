// OUTPUT NAME: gives the active document a name. Only its length is checked.

#include "module/document/commands.h"
#include "module/document/positional_name.h"
#include "module/frame/document_command.h"

namespace vexa {

namespace {

constexpr CommandIdentity kIdentity{"OUTPUT NAME", "Output Name"_text, "OUTPUT NAME"};

}  // namespace

void outputName() {
    DocumentCommand command(kIdentity, kPositionalNameGrammar);
    if (!command.parse()) {
        return;
    }
    const auto settings =
        readPositionalName(command.leading().exportParamObj(), LoneEquals::isSkipped, command.messages());
    if (!settings) {
        command.messages().WrongValueType("NAME", "", kOneName);
        return;
    }
    if (!DocumentCommand::refusesLongName(settings->name)) {
        command.send(OutputControllerCommand::name, settings->name, settings->minimized);
    }
}

}  // namespace vexa
