#include "backend/session/own_commands.h"

#include <array>
#include <string_view>

#include "backend/names/valid_name.h"
#include "backend/paths/file_specification.h"
#include "backend/session/session_messages.h"
#include "backend/strings/dictionary.h"
#include "backend/syntax/command_spec.h"
#include "backend/syntax/universal_parser.h"
#include "backend/text/character_set.h"

namespace vexa {

namespace {

using UP = UPSpecTypes;

/// A subcommand whose tokens the command reads itself; `value` is what help calls them.
SubComDescriptor freeSubcommand(std::string_view name, UP::ParamSpec form, std::string_view value) {
    return SubComDescriptor(name, UP::SubComSpec::freeTokens, true, false)
        .addParamDesc(ParamDescriptor("", form, false, true).setValueLabel(value));
}

/// Parses `tokens`; false when the parser has reported an error.
bool parse(const TokenSequenceBase& tokens, CommandSpec& spec, const CommandDescriptor& descriptor) {
    return UniversalParser(tokens, spec, descriptor).getCommandSpecifications() == 0;
}

/// Where a complaint about `value` points: its first token, or the end of the command when it is empty.
std::size_t offsetOf(const TokenSequenceBase& tokens, std::span<const TokenInfoObj> value) {
    return value.empty() ? tokens.command().text.size() : value.front().offset();
}

std::span<const TokenInfoObj> freeTokens(const CommandSpec& spec, std::string_view subcommand) {
    const SubComObj* const found = spec.getSubComObj(subcommand);
    return found == nullptr ? std::span<const TokenInfoObj>() : found->exportParamObj().getTokenList();
}

/// The text of a value that must be one literal; otherwise `complaint` is reported where the value stands.
std::optional<std::string> oneLiteral(const TokenSequenceBase& tokens, std::span<const TokenInfoObj> value,
                                      SystemText complaint) {
    if (value.size() == 1 && value.front().isLiteral()) {
        return std::string(value.front().getString());
    }
    const std::span<const TokenInfoObj> wrong =
        value.size() > 1 && value.front().isLiteral() ? value.subspan(1) : value;
    reportSyntaxError(tokens.command(), offsetOf(tokens, wrong), translated(complaint));
    return std::nullopt;
}

std::span<const TokenInfoObj> withoutEqualsSign(std::span<const TokenInfoObj> value) {
    const bool equals = !value.empty() && value.front().getOperatorCode() == TokenSequenceBase::equalsSign;
    return equals ? value.subspan(1) : value;
}

/// The whole path of what the user named.
std::string resolve(const std::string& name) {
    std::array<char, kFileSpecificationCapacity> buffer{};
    std::string path = name;
    if (ExpandDirectoryHandle(path.c_str(), buffer.data(), static_cast<int>(path.size())) == 0) {
        path = buffer.data();
    }
    if (ExpandFileSpecification(path.c_str(), buffer.data()) == 0) {
        path = buffer.data();
    }
    return path;
}

}  // namespace

CommandDescriptor describeOwnCommand(OwnCommand own) {
    switch (own) {
        case OwnCommand::fileHandle:
            return CommandDescriptor("FILE HANDLE")
                .addSubComDesc(freeSubcommand("", UP::ParamSpec::word, "name"))
                .addSubComDesc(freeSubcommand("NAME", UP::ParamSpec::literalOrWord, "folder"));
        case OwnCommand::changeFolder:
            return CommandDescriptor("CD").addSubComDesc(
                freeSubcommand("", UP::ParamSpec::literalOrWord, "folder"));
        case OwnCommand::insert:
            return CommandDescriptor("INSERT").addSubComDesc(
                SubComDescriptor("", UP::SubComSpec::keywordParameters, true, false)
                    .addParamDesc(
                        ParamDescriptor("FILE", UP::ParamSpec::tokens, true, true).setValueLabel("file")));
        case OwnCommand::echo:
            return CommandDescriptor("ECHO").addSubComDesc(
                freeSubcommand("", UP::ParamSpec::literalOrWord, "text"));
        case OwnCommand::none:
            break;
    }
    return CommandDescriptor("");
}

void runFileHandle(const TokenSequenceBase& tokens) {
    CommandSpec spec;
    const CommandDescriptor descriptor = describeOwnCommand(OwnCommand::fileHandle);
    if (!parse(tokens, spec, descriptor)) {
        return;
    }
    const std::span<const TokenInfoObj> name = freeTokens(spec, "");
    if (name.size() != 1 || !name.front().isWord() ||
        ValidateVexaNameCheckLastChar(std::string(name.front().getString()).c_str()) != 0) {
        reportSyntaxError(
            tokens.command(), offsetOf(tokens, name),
            translated(
                "FILE HANDLE needs one name here, as in: FILE HANDLE data /NAME='c:\\project\\data'."_text));
        return;
    }
    const std::optional<std::string> target = oneLiteral(
        tokens, withoutEqualsSign(freeTokens(spec, "NAME")),
        "NAME needs one quoted folder or file, as in: FILE HANDLE data /NAME='c:\\project\\data'."_text);
    if (target && !target->empty()) {
        FileLocations::current().setHandle(name.front().getString(), *target);
    } else if (target) {
        reportSyntaxError(tokens.command(), freeTokens(spec, "NAME").back().offset(),
                          translated("NAME must not be empty."_text));
    }
}

void runChangeFolder(const TokenSequenceBase& tokens) {
    CommandSpec spec;
    const CommandDescriptor descriptor = describeOwnCommand(OwnCommand::changeFolder);
    if (!parse(tokens, spec, descriptor)) {
        return;
    }
    const std::optional<std::string> folder =
        oneLiteral(tokens, freeTokens(spec, ""), "CD needs one quoted folder, as in: CD 'c:\\project'."_text);
    if (folder && !FileLocations::current().changeFolder(resolve(*folder))) {
        reportAt(placeOf(tokens.command(), offsetOf(tokens, freeTokens(spec, ""))), kErrorLevel,
                 "There is no folder ^1. The working folder is unchanged."_text, {toUtf8(*folder)});
    }
}

std::optional<InsertedFile> readInsert(const TokenSequenceBase& tokens) {
    CommandSpec spec;
    const CommandDescriptor descriptor = describeOwnCommand(OwnCommand::insert);
    if (!parse(tokens, spec, descriptor)) {
        return std::nullopt;
    }
    const std::span<const TokenInfoObj> value = spec.getSubComObj("")->getParamObj("FILE")->getTokenList();
    const std::optional<std::string> name =
        oneLiteral(tokens, value, "FILE needs one quoted file, as in: INSERT FILE='more.vxs'."_text);
    if (!name) {
        return std::nullopt;
    }
    return InsertedFile{resolve(*name), offsetOf(tokens, value)};
}

std::optional<std::string> readEcho(const TokenSequenceBase& tokens) {
    CommandSpec spec;
    const CommandDescriptor descriptor = describeOwnCommand(OwnCommand::echo);
    if (!parse(tokens, spec, descriptor)) {
        return std::nullopt;
    }
    return oneLiteral(tokens, freeTokens(spec, ""),
                      "ECHO needs one quoted text, as in: ECHO 'Saving the report'."_text);
}

}  // namespace vexa
