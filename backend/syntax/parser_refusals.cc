// What the parser says when it refuses a command: what was found, what would fit, and where.

#include <utility>

#include "backend/platform/character_set.h"
#include "backend/syntax/nearest_keyword.h"
#include "backend/syntax/universal_parser.h"
#include "backend/syntax/value_check.h"

namespace vexa {

namespace {

using Code = TokenSequenceBase::OperatorCode;

std::vector<std::string_view> parameterNames(const SubComDescriptor& descriptor) {
    std::vector<std::string_view> names;
    names.reserve(descriptor.parameters().size());
    for (const ParamDescriptor& each : descriptor.parameters()) {
        names.push_back(each.name());
    }
    return names;
}

std::string didYouMean(const TokenInfoObj& token, const std::vector<std::string_view>& candidates) {
    const std::string_view meant =
        token.isWordLike() ? nearestKeyword(token.getString(), candidates) : std::string_view();
    return meant.empty() ? "" : " Did you mean " + std::string(meant) + "?";
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
    return descriptor.name().empty() ? std::string(descriptor_.name())
                                     : "subcommand " + std::string(descriptor.name());
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
    std::string message = name + " needs a value: " + describeValue(parameter) + ".";
    const bool ownKeyword = !equalsGiven && !atEnd() && tokens_[at_].isWordLike() &&
                            descriptor.findParameter(tokens_[at_].getString()) != nullptr;
    if (ownKeyword) {
        message += " Without \"=\" " + nextAsTyped() +
                   " is read as the next keyword; if it is the value, write " + name + "=" +
                   toUtf8(tokens_[at_].getString()) + ".";
    }
    return fail(std::move(message), offset);
}

bool UniversalParser::refuseUnbracketed(const ParamDescriptor& parameter) {
    const std::string name(parameter.name());
    return fail("The value of " + name + " stands in square brackets: " + name + "=[...]." +
                    (atEnd() ? "" : " Found " + nextAsTyped() + "."),
                nextOffset());
}

bool UniversalParser::refuseUnparenthesised(const ParamDescriptor& parameter) {
    return fail(std::string(parameter.name()) + " takes " + describeValue(parameter) + "." +
                    (atEnd() ? "" : " Found " + nextAsTyped() + "."),
                nextOffset());
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
        "Found " + nextAsTyped() + " where a keyword of " + nameOf(descriptor) + " belongs.";
    const std::string meant = didYouMean(token, candidates);
    message += meant.empty() && !names.empty() ? " It takes " + listKeywords(names) + "." : meant;
    if (meant.empty() && beginsLaterLine(token, sequence_.command())) {
        message += " Is the period missing that ends the command before?";
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
        fail("The value of " + name + " is missing: " + toUtf8(last.getStringToken()) +
                 " was read as its value, and then came \"=\".",
             last.getTokenObj(0).offset());
        return true;
    }
    if (token.isOperator() || parameter == nullptr || !takesOneToken(*parameter) || !last.isTokenList()) {
        return false;
    }
    fail(name + " takes " + describeValue(*parameter) + ". Only one can be given; found " + nextAsTyped() +
             " behind the first.",
         token.offset());
    return true;
}

bool UniversalParser::refuseSlash(std::size_t offset) {
    return atEnd() ? fail("The name of a subcommand must follow \"/\".", offset)
                   : fail("The name of a subcommand must follow \"/\". Found " + nextAsTyped() +
                              ". Is this a file name? Then put it in quotes.",
                          nextOffset());
}

bool UniversalParser::refuseSubcommand(const TokenInfoObj& word) {
    const SubComDescriptor* const leading = descriptor_.findSubcommand("");
    const ParamDescriptor* const own =
        leading == nullptr ? nullptr : leading->findParameter(word.getString());
    if (own != nullptr && word.isWordLike()) {
        return fail(std::string(own->name()) + " belongs to " + std::string(descriptor_.name()) +
                        " itself: write it before the first subcommand, without \"/\".",
                    word.offset());
    }
    const std::vector<std::string_view> names = subcommandNames();
    const std::string command(descriptor_.name());
    std::string message = "Found " + nextAsTyped() + " where ";
    if (names.empty()) {
        message += leading == nullptr ? "the command ends. " + command + " takes nothing more."
                                      : "a subcommand would stand, but " + command +
                                            " has none. Is \"/\" part of a file name? Then put it in quotes.";
    } else {
        message += "a subcommand of " + command + " belongs.";
        const std::string meant = didYouMean(word, names);
        message += meant.empty() ? " It has " + listKeywords(names) + "." : meant;
    }
    return fail(std::move(message), word.offset());
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
        return fail(std::string(parameter.name()) + " is missing: " + nameOf(descriptor) +
                        " needs it, with " + describeValue(parameter) + ".",
                    offset);
    }
    return true;
}

bool UniversalParser::checkRequiredSubcommands() {
    const auto missing = [this](const SubComDescriptor& subcommand, const std::string& where,
                                std::size_t offset) {
        return fail("Subcommand " + std::string(subcommand.name()) + " is missing: " + where, offset);
    };
    const std::string command(descriptor_.name());
    for (const SubComDescriptor& each : descriptor_.subcommands()) {
        if (each.isRequired() && !each.name().empty() && !spec_.hasSubCom(each.name())) {
            return missing(each, command + " needs it.", nextOffset());
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
            return missing(*leading, command + " needs at least one.", nextOffset());
        }
        for (const SubComDescriptor& each : group.subcommands()) {
            for (const GroupComObj* const one : given) {
                if (each.isRequired() && !one->hasSubCom(each.name())) {
                    return missing(each, "every " + std::string(leading->name()) + " needs it.",
                                   one->getSubComObj(leading->name())->keyword()->offset());
                }
            }
        }
    }
    return true;
}

std::string UniversalParser::nextAsTyped() const { return asTyped(tokens_[at_], sequence_.command()); }

bool UniversalParser::fail(std::string message, std::size_t offset) {
    error_ = ParseError{std::move(message), offset};
    return false;
}

}  // namespace vexa
