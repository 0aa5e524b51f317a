// OUTPUT SAVE: saves a document to a file. All checks run, so one command can report several of them; the
// request is sent only when none failed.

#include "backend/text/character_set.h"
#include "module/document/commands.h"
#include "module/frame/document_command.h"
#include "module/frame/given_values.h"
#include "module/frame/report.h"

namespace vexa {

namespace {

constexpr CommandIdentity kIdentity{"OUTPUT SAVE", "Output Save"_text, "Output Save"};

constexpr std::string_view kTypes[] = {"VXV", "VXW"};

constexpr ParameterRow kParameters[] = {
    {"OUTFILE", UPSpecTypes::ParamSpec::tokens, true, true, {}, "file"},
    {"NAME", UPSpecTypes::ParamSpec::tokens, false, true, {}, "{name|*}"},
    {"TYPE", UPSpecTypes::ParamSpec::word, false, true, kTypes},
    {"LOCK", UPSpecTypes::ParamSpec::word, false, true, kYesNo},
    {"STOREMODEL", UPSpecTypes::ParamSpec::word, false, true, kYesNo},
};

constexpr ParameterRow kPasswordParameters[] = {
    {"PASSWORD", UPSpecTypes::ParamSpec::literalOrWord, false, true, kNone, "password"},
    {"ENCRYPTEDPW", UPSpecTypes::ParamSpec::word, false, true, kYesNo},
};

constexpr SubcommandRow kGrammar[] = {
    {"", UPSpecTypes::SubComSpec::keywordParameters, true, false, kParameters},
    {"PASSPROTECT", UPSpecTypes::SubComSpec::keywordParameters, false, false, kPasswordParameters},
};

constexpr SystemText kEmptyPassword = "Failed to save document. Empty passwords are not allowed."_text;
// Names 10 bytes also where the limit is 20; this is meant.
constexpr SystemText kLongPassword =
    "Failed to save document. Passwords longer than 10 bytes are not allowed. '^1'"_text;

constexpr ExpectedValue kNameOrActive{"one name, or * for the active document"_text};

constexpr std::size_t kLongestPassword = 10;
constexpr std::size_t kLongestEncryptedPassword = 20;

/// What was read, and whether it may be sent.
struct Settings {
    DocumentCommand::FileRequest request;
    bool valid = true;
};

void readFile(const SubComObj& leading, ParserMessage& messages, Settings& settings) {
    if (const ParamObj* const file = leading.getParamObj("OUTFILE")) {
        settings.request.file = readFileSpecification(*file, "OUTFILE", messages);
    }
    settings.valid = settings.valid && !settings.request.file.empty();
}

/// A name, or the operator '*', which leaves the name empty.
void readName(const SubComObj& leading, ParserMessage& messages, Settings& settings) {
    const ParamObj* const given = leading.getParamObj("NAME");
    std::string_view name;
    if (given == nullptr) {
        return;
    }
    if (given->getStringGeneric(name)) {
        settings.request.name = name;
    } else if (!given->isOperatorValue(TokenSequenceBase::asterisk)) {
        messages.WrongValueType("NAME", "", kNameOrActive);
        settings.valid = false;
    }
}

/// The value of a parameter that says YES or NO, or `otherwise`.
template <typename YesNo>
YesNo readYesNo(const SubComObj& subcommand, std::string_view name, YesNo otherwise) {
    const ParamObj* const given = subcommand.getParamObj(name);
    if (given != nullptr && given->isStringValue("YES")) {
        return YesNo::yes;
    }
    return given != nullptr && given->isStringValue("NO") ? YesNo::no : otherwise;
}

OutputDocumentType readType(const SubComObj& leading) {
    const ParamObj* const type = leading.getParamObj("TYPE");
    if (type != nullptr && type->isStringValue("VXV")) {
        return OutputDocumentType::vxv;
    }
    return type != nullptr && type->isStringValue("VXW") ? OutputDocumentType::vxw
                                                         : OutputDocumentType::notGiven;
}

void checkPasswordLength(std::size_t limit, Settings& settings) {
    if (settings.request.password.size() > limit) {
        reportMessage(kLongPassword, settings.request.password, kErrorLevel);
        settings.valid = false;
    }
}

void readPassword(const SubComObj& protection, Settings& settings) {
    const ParamObj* const password = protection.getParamObj("PASSWORD");
    std::string_view text;
    bool isLiteral = false;
    if (password != nullptr && password->getStringOrLiteral(text, isLiteral) && isLiteral) {
        settings.request.password = text;
    }
    if (settings.request.password.empty()) {
        reportPlain(kEmptyPassword, kErrorLevel);
        settings.valid = false;
    }
    const ParamObj* const encrypted = protection.getParamObj("ENCRYPTEDPW");
    if (encrypted == nullptr) {
        return;  // without ENCRYPTEDPW a password may be of any length
    }
    const std::string answer = encrypted->getUpStringToken();
    if (VEXAMBstrcmp_A(answer.c_str(), "YES") == 0) {
        settings.request.encrypted = OutputDocumentEncryptPW::yes;
        checkPasswordLength(kLongestEncryptedPassword, settings);
    } else if (VEXAMBstrcmp_A(answer.c_str(), "NO") == 0) {
        checkPasswordLength(kLongestPassword, settings);
    }
}

Settings read(DocumentCommand& command) {
    Settings settings;
    settings.request.encrypted = OutputDocumentEncryptPW::no;
    const SubComObj& leading = command.leading();
    readFile(leading, command.messages(), settings);
    readName(leading, command.messages(), settings);
    settings.request.type = readType(leading);
    settings.request.lock = readYesNo(leading, "LOCK", OutputDocumentLock::notGiven);
    settings.request.yesNo = readYesNo(leading, "STOREMODEL", YesNoEnum::yes);
    if (const SubComObj* const protection = command.spec().getSubComObj("PASSPROTECT")) {
        readPassword(*protection, settings);
    }
    return settings;
}

}  // namespace

void outputSave() {
    DocumentCommand command(kIdentity, kGrammar);
    if (!command.parse()) {
        return;
    }
    const Settings settings = read(command);
    if (settings.valid) {
        command.send(OutputControllerCommand::save, settings.request);
    }
}

}  // namespace vexa
