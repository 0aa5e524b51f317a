// What the parser says when it refuses a command: what was found, what would fit, and where.

#include <utility>

#include "backend/syntax/nearest_keyword.h"
#include "backend/syntax/refusal_texts.h"
#include "backend/syntax/universal_parser.h"
#include "backend/syntax/value_check.h"
#include "backend/text/character_set.h"

namespace vexa {

namespace {

using Code = TokenSequenceBase::OperatorCode;

constexpr SystemText kItTakes = "It takes ^1."_text;
constexpr SystemText kReadAsKeyword =
    "Without \"=\", ^1 is read as the next keyword; if it is the value, write ^2=^3."_text;
constexpr SystemText kCommandEnds = "Found ^1 where the command ends. ^2 takes nothing more."_text;
constexpr SystemText kNoSubcommands =
    "Found ^1 where a subcommand would be, but ^2 has none. If \"/\" is part of a file name, put the name in quotes."_text;

std::vector<std::string_view> parameterNames(const SubComDescriptor& descriptor) {
    std::vector<std::string_view> names;
    names.reserve(descriptor.parameters().size());
    for (const ParamDescriptor& each : descriptor.parameters()) {
        names.push_back(each.name());
    }
    return names;
}

/// True when the token is the first of a line that is not the command's first: perhaps a new command was
/// meant.
bool beginsLaterLine(const TokenInfoObj& token, const CommandText& command) {
    const std::string_view before = std::string_view(command.text).substr(0, token.offset());
    const std::size_t last = before.find_last_not_of(" \t\r");
    return last != std::string_view::npos && before[last] == '\n';
}

}  // namespace

std::string UniversalParser::nameOf(const SubComDescriptor& descriptor) const {
    return descriptor.name().empty() ? std::string(descriptor_.name()) : std::string(descriptor.name());
}

std::vector<std::string_view> UniversalParser::subcommandNames() const {
    std::vector<std::string_view> names;
    const auto add = [&names](const std::vector<SubComDescriptor>& subcommands) {
        for (const SubComDescriptor& each : subcommands) {
            if (!each.name().empty()) {
                names.push_back(each.name());
            }
        }
    };
    add(descriptor_.subcommands());
    for (const GroupComDescriptor& group : descriptor_.groups()) {
        add(group.subcommands());
    }
    return names;
}

bool UniversalParser::refuseMissingValue(const SubComDescriptor& descriptor, const ParamDescriptor& parameter,
                                         bool equalsGiven, std::size_t offset) {
    const std::string name(parameter.name());
    std::string message = composed(texts::kNeedsValue, {name, describeValue(parameter)});
    const bool ownKeyword = !equalsGiven && !atEnd() && tokens_[at_].isWordLike() &&
                            descriptor.findParameter(tokens_[at_].getString()) != nullptr;
    if (ownKeyword) {
        appendSentence(message,
                       composed(kReadAsKeyword, {nextAsTyped(), name, toUtf8(tokens_[at_].getString())}));
    }
    return fail(std::move(message), offset);
}

bool UniversalParser::refuseUnbracketed(const ParamDescriptor& parameter) {
    return fail(sentences({composed("Write the value of ^1 in square brackets: ^1=[...]."_text,
                                    {std::string(parameter.name())}),
                           foundNext()}),
                nextOffset());
}

bool UniversalParser::refuseUnparenthesised(const ParamDescriptor& parameter) {
    return fail(sentences({whatItTakes(parameter), foundNext()}), nextOffset());
}

bool UniversalParser::refuseParameter(const SubComDescriptor& descriptor, const SubComObj& result) {
    const TokenInfoObj& token = tokens_[at_];
    if (refuseBehindValue(descriptor, result)) {
        return false;
    }
    const std::vector<std::string_view> names = parameterNames(descriptor);
    std::vector<std::string_view> candidates = subcommandNames();
    candidates.insert(candidates.begin(), names.begin(), names.end());
    std::string message =
        composed(descriptor.name().empty() ? "Found ^1 where a keyword of ^2 was expected."_text
                                           : "Found ^1 where a keyword of subcommand ^2 was expected."_text,
                 {nextAsTyped(), nameOf(descriptor)});
    const std::string meant = didYouMean(token, candidates);
    appendSentence(message,
                   meant.empty() && !names.empty() ? composed(kItTakes, {listKeywords(names)}) : meant);
    if (meant.empty() && beginsLaterLine(token, sequence_.command())) {
        appendSentence(message, translated("Is the period at the end of the previous command missing?"_text));
    }
    return fail(std::move(message), token.offset());
}

bool UniversalParser::refuseBehindValue(const SubComDescriptor& descriptor, const SubComObj& result) {
    const TokenInfoObj& token = tokens_[at_];
    if (token.isWordLike() || result.parameters().empty()) {
        return false;
    }
    const ParamObj& last = result.parameters().back();
    const ParamDescriptor* const parameter = descriptor.findParameter(last.name());
    const std::string name(last.name());
    const bool swallowed = last.getTokenListSize() == 1 && last.getTokenObj(0).isWordLike() &&
                           descriptor.findParameter(last.getTokenObj(0).getString()) != nullptr;
    if (token.getOperatorCode() == Code::equalsSign && swallowed) {
        fail(composed("The value of ^1 is missing: ^2 was read as its value, and \"=\" followed."_text,
                      {name, toUtf8(last.getStringToken())}),
             last.getTokenObj(0).offset());
        return true;
    }
    if (token.isOperator() || parameter == nullptr || !takesOneToken(*parameter) || !last.isTokenList()) {
        return false;
    }
    fail(sentences({whatItTakes(*parameter), onlyOne(token, sequence_.command())}), token.offset());
    return true;
}

bool UniversalParser::refuseSlash(std::size_t offset) {
    const std::string rule = translated("The name of a subcommand must follow \"/\"."_text);
    return atEnd() ? fail(rule, offset)
                   : fail(sentences({rule, foundNext(),
                                     translated("If this is a file name, put it in quotes."_text)}),
                          nextOffset());
}

bool UniversalParser::refuseSubcommand(const TokenInfoObj& word) {
    const SubComDescriptor* const leading = descriptor_.findSubcommand("");
    const ParamDescriptor* const own =
        leading == nullptr ? nullptr : leading->findParameter(word.getString());
    if (own != nullptr && word.isWordLike()) {
        return fail(
            composed("^1 belongs to ^2 itself: write it before the first subcommand, without \"/\"."_text,
                     {std::string(own->name()), std::string(descriptor_.name())}),
            word.offset());
    }
    const std::vector<std::string> arguments = {nextAsTyped(), std::string(descriptor_.name())};
    const std::vector<std::string_view> names = subcommandNames();
    if (names.empty()) {
        return fail(composed(leading == nullptr ? kCommandEnds : kNoSubcommands, arguments), word.offset());
    }
    const std::string meant = didYouMean(word, names);
    return fail(sentences({composed("Found ^1 where a subcommand of ^2 was expected."_text, arguments),
                           meant.empty() ? composed("It accepts ^1."_text, {listKeywords(names)}) : meant}),
                word.offset());
}

bool UniversalParser::checkRequired(const SubComDescriptor& descriptor, const SubComObj& result,
                                    std::size_t offset) {
    for (const ParamDescriptor& parameter : descriptor.parameters()) {
        if (!parameter.isRequired() || result.getParamObj(parameter.name()) != nullptr) {
            continue;
        }
        const bool behindSlash = descriptor.name().empty() && isAt(Code::slash) && at_ + 1 < tokens_.size() &&
                                 descriptor.findParameter(tokens_[at_ + 1].getString()) != nullptr;
        if (behindSlash) {
            return refuseSubcommand(tokens_[++at_]);
        }
        return fail(
            composed(descriptor.name().empty() ? "^1 is missing: ^2 needs it, with ^3."_text
                                               : "^1 is missing: subcommand ^2 needs it, with ^3."_text,
                     {std::string(parameter.name()), nameOf(descriptor), describeValue(parameter)}),
            offset);
    }
    return true;
}

bool UniversalParser::checkRequiredSubcommands() {
    const auto missing = [this](const SubComDescriptor& subcommand, SystemText text, std::string_view owner,
                                std::size_t offset) {
        return fail(composed(text, {std::string(subcommand.name()), std::string(owner)}), offset);
    };
    for (const SubComDescriptor& each : descriptor_.subcommands()) {
        if (each.isRequired() && !each.name().empty() && !spec_.hasSubCom(each.name())) {
            return missing(each, "Subcommand ^1 is missing: ^2 needs it."_text, descriptor_.name(),
                           nextOffset());
        }
    }
    for (const GroupComDescriptor& group : descriptor_.groups()) {
        const SubComDescriptor* const leading = group.leading();
        if (leading == nullptr) {
            continue;
        }
        std::vector<const GroupComObj*> given;
        spec_.getGroupComObj(given, leading->name());
        if (group.isRequired() && given.empty()) {
            return missing(*leading, "Subcommand ^1 is missing: ^2 needs at least one."_text,
                           descriptor_.name(), nextOffset());
        }
        for (const SubComDescriptor& each : group.subcommands()) {
            for (const GroupComObj* const one : given) {
                if (each.isRequired() && !one->hasSubCom(each.name())) {
                    return missing(each, "Subcommand ^1 is missing: every ^2 needs it."_text, leading->name(),
                                   one->getSubComObj(leading->name())->keyword()->offset());
                }
            }
        }
    }
    return true;
}

std::string UniversalParser::nextAsTyped() const { return asTyped(tokens_[at_], sequence_.command()); }

std::string UniversalParser::foundNext() const {
    return atEnd() ? std::string() : composed(texts::kFound, {nextAsTyped()});
}

bool UniversalParser::fail(std::string message, std::size_t offset) {
    error_ = CommandError{std::move(message), offset};
    return false;
}

}  // namespace vexa
