// OUTPUT NEW: makes a new document.

#include "backend/names/valid_name.h"
#include "backend/text/character_set.h"
#include "module/document/commands.h"
#include "module/frame/document_command.h"

namespace vexa {

namespace {

constexpr CommandIdentity kIdentity{"OUTPUT NEW", "Output New"_text, "OUTPUT NEW"};

constexpr std::string_view kTypes[] = {"VIEWER", "DRAFT"};

constexpr ParameterRow kParameters[] = {
    {"TYPE", UPSpecTypes::ParamSpec::word, false, true, kTypes},
    {"NAME", UPSpecTypes::ParamSpec::word, false, true, {}, "name"},
    {"MINIMIZED", UPSpecTypes::ParamSpec::word, false, true, kYesNo},
};

constexpr SubcommandRow kGrammar[] = {
    {"", UPSpecTypes::SubComSpec::keywordParameters, false, false, kParameters},
};

constexpr ExpectedValue kValidName{
    "one name that begins with a letter, @, #, $ or a character above 127, continues with those, digits, '.' or '_', and does not end in '.' or '_'"_text};

struct Settings {
    std::string name;
    OutputDocumentMinimized minimized = OutputDocumentMinimized::no;
};

/// TYPE is accepted and makes no difference, on purpose: both types make the same document.
Settings read(const SubComObj& leading) {
    Settings settings;
    if (const ParamObj* const name = leading.getParamObj("NAME")) {
        settings.name = name->getStringToken();
    }
    const ParamObj* const minimized = leading.getParamObj("MINIMIZED");
    if (minimized != nullptr && !minimized->isStringValue("NO")) {
        settings.minimized = OutputDocumentMinimized::yes;
    }
    return settings;
}

bool check(const Settings& settings, DocumentCommand& command) {
    if (DocumentCommand::refusesLongName(settings.name)) {
        return false;
    }
    if (!settings.name.empty() && ValidateVexaNameCheckLastChar(settings.name.c_str()) != 0) {
        command.messages().WrongValueType("NAME", "", kValidName);
        return false;
    }
    return true;
}

}  // namespace

void outputNew() {
    DocumentCommand command(kIdentity, kGrammar);
    if (!command.parse()) {
        return;
    }
    const Settings settings = read(command.leading());
    if (check(settings, command)) {
        command.send(OutputControllerCommand::newDocument, settings.name, settings.minimized);
    }
}

}  // namespace vexa
