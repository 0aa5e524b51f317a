// OUTPUT OPEN: opens a saved document.

#include "module/document/commands.h"
#include "module/frame/document_command.h"
#include "module/frame/given_values.h"

namespace vexa {

namespace {

constexpr CommandIdentity kIdentity{"OUTPUT OPEN", "Output Open"_text, "Output Open"};

constexpr ParameterRow kParameters[] = {
    {"FILE", UPSpecTypes::ParamSpec::tokens, true, true, {}, "file"},
    optionalParameter("NAME", UPSpecTypes::ParamSpec::word, "name")
        .readOnly(UPSpecTypes::ReadValue::textButAll),
    {"LOCK", UPSpecTypes::ParamSpec::word, false, true, kYesNo},
    {"MINIMIZED", UPSpecTypes::ParamSpec::word, false, true, kYesNo},
    optionalParameter("PASSWORD", UPSpecTypes::ParamSpec::literalOrWord, "password")
        .of(kNone)
        .readOnly(UPSpecTypes::ReadValue::quotedTextOrOwnKeyword),
};

constexpr SubcommandRow kGrammar[] = {
    {"", UPSpecTypes::SubComSpec::keywordParameters, true, false, kParameters},
};

/// Looks for a TYPE that the grammar does not have, on purpose: the type sent is always "not given".
OutputDocumentType readType(const SubComObj& leading) {
    const ParamObj* const type = leading.getParamObj("TYPE");
    if (type == nullptr) {
        return OutputDocumentType::notGiven;
    }
    if (type->isStringValue("VXV")) {
        return OutputDocumentType::vxv;
    }
    return type->isStringValue("VXW") ? OutputDocumentType::vxw : OutputDocumentType::notGiven;
}

/// The password, which must be quoted; the word NONE, or any other, stands for none.
std::string readPassword(const SubComObj& leading) {
    std::string_view text;
    bool isLiteral = false;
    const ParamObj* const password = leading.getParamObj("PASSWORD");
    const bool given = password != nullptr && password->getStringOrLiteral(text, isLiteral) && isLiteral;
    return given ? std::string(text) : std::string();
}

DocumentCommand::FileRequest read(const SubComObj& leading, ParserMessage& messages) {
    DocumentCommand::FileRequest request;
    if (const ParamObj* const file = leading.getParamObj("FILE")) {
        request.file = readFileSpecification(*file, "FILE", messages);
    }
    std::string_view name;
    if (const ParamObj* const given = leading.getParamObj("NAME");
        given != nullptr && given->getStringGeneric(name)) {
        request.name = name;
    }
    const ParamObj* const lock = leading.getParamObj("LOCK");
    const bool unlocked = lock != nullptr && lock->isStringValue("NO");
    request.lock = unlocked ? OutputDocumentLock::no : OutputDocumentLock::yes;
    const ParamObj* const minimized = leading.getParamObj("MINIMIZED");
    const bool minimize = minimized != nullptr && !minimized->isStringValue("NO");
    request.minimized = minimize ? OutputDocumentMinimized::yes : OutputDocumentMinimized::no;
    request.type = readType(leading);
    request.password = readPassword(leading);
    return request;
}

}  // namespace

void outputOpen() {
    DocumentCommand command(kIdentity, kGrammar);
    if (!command.parse()) {
        return;
    }
    const DocumentCommand::FileRequest request = read(command.leading(), command.messages());
    if (!DocumentCommand::refusesLongName(request.name) && !request.file.empty()) {
        command.send(OutputControllerCommand::open, request);
    }
}

}  // namespace vexa
