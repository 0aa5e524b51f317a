// OUTPUT CLOSE: closes one document or all. A refused close is not reported, on purpose.

#include <optional>

#include "backend/text/character_set.h"
#include "module/document/commands.h"
#include "module/frame/document_command.h"

namespace vexa {

namespace {

constexpr CommandIdentity kIdentity{"OUTPUT CLOSE", "Output Close"_text, "Output Close"};

/// What help and completion show; the command reads its tokens itself.
constexpr ParameterRow kParameters[] = {
    {"NAME", UPSpecTypes::ParamSpec::tokens, false, true, {}, "{name|ALL|*}"},
};

constexpr SubcommandRow kGrammar[] = {
    {"", UPSpecTypes::SubComSpec::freeTokens, true, false, kParameters},
};

constexpr ExpectedValue kOneOrAll{"one name, ALL, or * for the active document, as in NAME=report"_text};

/// NAME=value, or the value alone; nothing for any other form.
std::optional<std::string> read(const ParamObj& list) {
    const std::span<const TokenInfoObj> tokens = list.getTokenList();
    const bool assigned = tokens.size() == 3 && tokens[0].spells("NAME") &&
                          tokens[1].getOperatorCode() == TokenSequenceBase::equalsSign;
    if (!assigned && tokens.size() != 1) {
        return std::nullopt;
    }
    const std::string_view name = tokens.back().getString();
    return std::string(equalsIgnoringCase(name, "ALL") ? "ALL" : name);
}

}  // namespace

void outputClose() {
    DocumentCommand command(kIdentity, kGrammar);
    if (!command.parse()) {
        return;
    }
    const std::optional<std::string> name = read(command.leading().exportParamObj());
    if (!name) {
        command.messages().WrongValueType("NAME", "", kOneOrAll);
        return;
    }
    command.sendUnanswered(OutputControllerCommand::close, *name, OutputDocumentMinimized::notGiven);
}

}  // namespace vexa
