#include "backend/syntax/universal_parser.h"

#include <algorithm>
#include <utility>

#include "backend/pivot/output_log.h"
#include "backend/syntax/nearest_keyword.h"
#include "backend/syntax/parse_mode.h"
#include "backend/syntax/value_check.h"

namespace vexa {

namespace {

using Spec = UPSpecTypes::ParamSpec;
using Code = TokenSequenceBase::OperatorCode;

std::vector<std::string_view> parameterNames(const SubComDescriptor& descriptor) {
    std::vector<std::string_view> names;
    for (const ParamDescriptor& each : descriptor.parameters()) {
        names.push_back(each.name());
    }
    return names;
}

std::string didYouMean(std::string_view word, const std::vector<std::string_view>& candidates) {
    const std::string_view meant = nearestKeyword(word, candidates);
    return meant.empty() ? "" : " Did you mean " + std::string(meant) + "?";
}

/// "OUTPUT SAVE", "subcommand PASSPROTECT".
std::string nameOf(const CommandDescriptor& command, const SubComDescriptor& descriptor) {
    return descriptor.name().empty() ? std::string(command.name())
                                     : "subcommand " + std::string(descriptor.name());
}

/// True for the forms whose value is exactly one token.
bool takesOneToken(Spec spec) {
    return spec == Spec::word || spec == Spec::literalOrWord || spec == Spec::number || spec == Spec::integer;
}

bool mayBeEmpty(const ParamDescriptor& parameter) {
    return !parameter.isValueRequired() || parameter.spec() == Spec::tokens ||
           parameter.spec() == Spec::qualifierList;
}

}  // namespace

UniversalParser::UniversalParser(const TokenSequenceBase& tokens, CommandSpec& spec,
                                 const CommandDescriptor& descriptor)
    : sequence_(tokens), tokens_(tokens.tokens()), spec_(spec), descriptor_(descriptor) {}

int UniversalParser::getCommandSpecifications() {
    ParseModeScope* const mode = ParseModeScope::current();
    if (mode != nullptr && mode->mode() == ParseMode::describe) {
        mode->setDescription(descriptor_);
        return 1;
    }
    if (sequence_.error()) {
        error_ = ParseError{sequence_.error()->message, sequence_.error()->offset};
    } else {
        parse();
    }
    if (error_) {
        OutputLog::current().publish(
            SyntaxErrorReported{error_->message, placeOf(sequence_.command(), error_->offset)});
        return 1;
    }
    return mode != nullptr ? 1 : 0;
}

bool UniversalParser::parse() {
    if (!parseLeading()) {
        return false;
    }
    while (!atEnd()) {
        if (!parseNext()) {
            return false;
        }
    }
    return checkRequiredSubcommands();
}

bool UniversalParser::parseLeading() {
    const SubComDescriptor* const leading = descriptor_.findSubcommand("");
    if (leading == nullptr) {
        return true;
    }
    SubComObj& result = spec_.subcommands_.emplace_back(std::string_view(), nullptr);
    const bool ownWord =
        !atEnd() && tokens_[at_].isWordLike() && leading->findParameter(tokens_[at_].getString()) != nullptr;
    if (!ownWord && leading->spec() != UPSpecTypes::SubComSpec::freeTokens && !atEnd() &&
        beginsSubcommand(at_)) {
        return checkRequired(*leading, result, nextOffset());
    }
    return parseBody(*leading, result);
}

bool UniversalParser::parseNext() {
    const bool slash = isAt(Code::slash);
    const std::size_t slashOffset = nextOffset();
    at_ += slash ? 1 : 0;
    if (atEnd() || !tokens_[at_].isWordLike()) {
        if (slash) {
            return fail(atEnd() ? "The name of a subcommand must follow \"/\"."
                                : "The name of a subcommand must follow \"/\". Found " + nextAsTyped() +
                                      ". Is this a file name? Then put it in quotes.",
                        atEnd() ? slashOffset : nextOffset());
        }
        return refuseSubcommand(tokens_[at_]);
    }
    const TokenInfoObj& keyword = tokens_[at_];
    if (const SubComDescriptor* const plain = descriptor_.findSubcommand(keyword.getString())) {
        ++at_;
        return parseSubcommand(*plain, spec_, keyword);
    }
    for (const GroupComDescriptor& group : descriptor_.groups()) {
        if (const SubComDescriptor* const grouped = group.findSubcommand(keyword.getString())) {
            ++at_;
            return parseGroupSubcommand(group, *grouped, keyword);
        }
    }
    return refuseSubcommand(keyword);
}

bool UniversalParser::parseSubcommand(const SubComDescriptor& descriptor, SubComList& list,
                                      const TokenInfoObj& keyword) {
    if (!descriptor.isRepeatable() && list.hasSubCom(descriptor.name())) {
        return fail("Subcommand " + std::string(descriptor.name()) + " is given twice; it can be given once.",
                    keyword.offset());
    }
    return parseBody(descriptor, list.subcommands_.emplace_back(descriptor.name(), &keyword));
}

bool UniversalParser::parseGroupSubcommand(const GroupComDescriptor& group,
                                           const SubComDescriptor& descriptor, const TokenInfoObj& keyword) {
    const SubComDescriptor* const leading = group.leading();
    if (&descriptor == leading) {
        spec_.groups_.emplace_back();
    } else if (spec_.groups_.empty()) {
        return fail("Subcommand " + std::string(descriptor.name()) + " stands before the first " +
                        std::string(leading == nullptr ? "" : leading->name()) +
                        ". It belongs to a group that begins with it.",
                    keyword.offset());
    }
    return parseSubcommand(descriptor, spec_.groups_.back(), keyword);
}

bool UniversalParser::parseBody(const SubComDescriptor& descriptor, SubComObj& result) {
    if (descriptor.spec() == UPSpecTypes::SubComSpec::freeTokens) {
        takeFreeTokens(result);
        return true;
    }
    while (!atEnd() && !isAt(Code::slash)) {
        const TokenInfoObj& token = tokens_[at_];
        const ParamDescriptor* const parameter =
            token.isWordLike() ? descriptor.findParameter(token.getString()) : nullptr;
        const bool given = parameter != nullptr && result.getParamObj(parameter->name()) != nullptr;
        if ((parameter == nullptr || given) && beginsSubcommand(at_)) {
            break;
        }
        if (parameter == nullptr) {
            return refuseParameter(descriptor);
        }
        if (given) {
            return fail(std::string(parameter->name()) + " is given twice; it can be given once in " +
                            nameOf(descriptor_, descriptor) + ".",
                        token.offset());
        }
        if (!parseParameter(descriptor, result, *parameter)) {
            return false;
        }
    }
    return checkRequired(descriptor, result, nextOffset());
}

void UniversalParser::takeFreeTokens(SubComObj& result) {
    const std::size_t from = at_;
    while (!atEnd() && !isAt(Code::slash)) {
        ++at_;
    }
    result.free_ = ParamObj({}, nullptr, tokens_.subspan(from, at_ - from));
}

bool UniversalParser::parseParameter(const SubComDescriptor& descriptor, SubComObj& result,
                                     const ParamDescriptor& parameter) {
    const TokenInfoObj& keyword = tokens_[at_++];
    const bool equalsGiven = isAt(Code::equalsSign);
    if (parameter.spec() == Spec::keyword) {
        if (equalsGiven) {
            return fail(std::string(parameter.name()) + " takes no value.", nextOffset());
        }
        result.parameters_.emplace_back(parameter.name(), &keyword, Tokens());
        return true;
    }
    at_ += equalsGiven ? 1 : 0;
    const std::size_t offset = nextOffset();
    Tokens value;
    if (!takeValue(descriptor, parameter, equalsGiven, value)) {
        return false;
    }
    if (value.empty() && !mayBeEmpty(parameter)) {
        return fail(std::string(parameter.name()) + " needs a value: " + describeValue(parameter) + ".",
                    offset);
    }
    if (const auto error = checkValue(parameter, value, sequence_.command())) {
        return fail(error->message, error->token == nullptr ? offset : error->token->offset());
    }
    result.parameters_.emplace_back(parameter.name(), &keyword, value);
    return true;
}

bool UniversalParser::takeValue(const SubComDescriptor& descriptor, const ParamDescriptor& parameter,
                                bool equalsGiven, Tokens& value) {
    const bool bracketed =
        parameter.brackets() != UPSpecTypes::BracketOptions::none && isAt(Code::openBracket);
    if (bracketed) {
        return takeBracketed(parameter, value);
    }
    if (parameter.brackets() == UPSpecTypes::BracketOptions::required && !parameter.isCheckedByCommand()) {
        return fail("The value of " + std::string(parameter.name()) +
                        " stands in square brackets: " + std::string(parameter.name()) + "=[...]." +
                        (atEnd() ? "" : " Found " + nextAsTyped() + "."),
                    nextOffset());
    }
    value = takePlain(descriptor, parameter, equalsGiven);
    return true;
}

bool UniversalParser::takeBracketed(const ParamDescriptor& parameter, Tokens& value) {
    const std::size_t closing = closingOf(at_);
    if (closing == tokens_.size()) {
        return fail("The list of " + std::string(parameter.name()) + " is not closed: \"]\" is missing.",
                    nextOffset());
    }
    value = tokens_.subspan(at_ + 1, closing - at_ - 1);
    at_ = closing + 1;
    return true;
}

UniversalParser::Tokens UniversalParser::takePlain(const SubComDescriptor& descriptor,
                                                   const ParamDescriptor& parameter, bool equalsGiven) {
    const std::size_t from = at_;
    const auto rest = [&] { return tokens_.subspan(from, at_ - from); };
    if (parameter.spec() == Spec::qualifierList) {
        const std::size_t closing = isAt(Code::openParenthesis) ? closingOf(at_) : at_;
        at_ = closing == at_ ? at_ : std::min(closing + 1, tokens_.size());
        return rest();
    }
    // Behind a written '=' the first token is the value, whatever it spells.
    if (equalsGiven && !atEnd() && tokens_[at_].isWordLike()) {
        ++at_;
    } else if (takesOneToken(parameter.spec()) && !atEnd() && !endsValue(descriptor, parameter, at_)) {
        ++at_;
    }
    while (!takesOneToken(parameter.spec()) && !atEnd() && !endsValue(descriptor, parameter, at_)) {
        const std::size_t closing =
            isAt(Code::openBracket) || isAt(Code::openParenthesis) ? closingOf(at_) : at_;
        at_ = closing == tokens_.size() ? at_ + 1 : closing + 1;
    }
    return rest();
}

bool UniversalParser::endsValue(const SubComDescriptor& descriptor, const ParamDescriptor& parameter,
                                std::size_t at) const {
    const TokenInfoObj& token = tokens_[at];
    if (token.getOperatorCode() == Code::slash) {
        return true;
    }
    if (!token.isWordLike() || parameter.hasStringValue(token.getString())) {
        return false;
    }
    return descriptor.findParameter(token.getString()) != nullptr || beginsSubcommand(at);
}

bool UniversalParser::refuseParameter(const SubComDescriptor& descriptor) {
    const TokenInfoObj& token = tokens_[at_];
    const std::vector<std::string_view> names = parameterNames(descriptor);
    std::vector<std::string_view> candidates = subcommandNames();
    candidates.insert(candidates.begin(), names.begin(), names.end());
    std::string message =
        "Found " + nextAsTyped() + " where a keyword of " + nameOf(descriptor_, descriptor) + " belongs.";
    const std::string meant = token.isWordLike() ? didYouMean(token.getString(), candidates) : "";
    message += meant.empty() && !names.empty() ? " It takes " + listKeywords(names) + "." : meant;
    return fail(message, token.offset());
}

bool UniversalParser::refuseSubcommand(const TokenInfoObj& word) {
    const std::vector<std::string_view> names = subcommandNames();
    const std::string command(descriptor_.name());
    const SubComDescriptor* const leading = descriptor_.findSubcommand("");
    std::string message = "Found " + nextAsTyped() + " where ";
    if (names.empty()) {
        message += leading == nullptr
                       ? "the command ends. " + command + " takes nothing more."
                       : "no subcommand can stand: " + command + " has none. Put file names in quotes.";
    } else {
        message += "a subcommand of " + command + " belongs.";
        const std::string meant = didYouMean(word.getString(), names);
        message += meant.empty() ? " It has " + listKeywords(names) + "." : meant;
    }
    if (leading != nullptr && leading->findParameter(word.getString()) != nullptr) {
        message = std::string(leading->findParameter(word.getString())->name()) + " belongs to " + command +
                  " itself: write it before the first subcommand, without \"/\".";
    }
    return fail(message, word.offset());
}

bool UniversalParser::checkRequired(const SubComDescriptor& descriptor, const SubComObj& result,
                                    std::size_t offset) {
    for (const ParamDescriptor& parameter : descriptor.parameters()) {
        if (parameter.isRequired() && result.getParamObj(parameter.name()) == nullptr) {
            return fail(std::string(parameter.name()) + " is missing: " + nameOf(descriptor_, descriptor) +
                            " needs it, with " + describeValue(parameter) + ".",
                        offset);
        }
    }
    return true;
}

bool UniversalParser::checkRequiredSubcommands() {
    for (const SubComDescriptor& each : descriptor_.subcommands()) {
        if (each.isRequired() && !each.name().empty() && !spec_.hasSubCom(each.name())) {
            return fail("Subcommand " + std::string(each.name()) +
                            " is missing: " + std::string(descriptor_.name()) + " needs it.",
                        nextOffset());
        }
    }
    for (const GroupComDescriptor& group : descriptor_.groups()) {
        const SubComDescriptor* const leading = group.leading();
        if (group.isRequired() && leading != nullptr && spec_.groups_.empty()) {
            return fail("Subcommand " + std::string(leading->name()) +
                            " is missing: " + std::string(descriptor_.name()) + " needs at least one.",
                        nextOffset());
        }
    }
    return true;
}

bool UniversalParser::isAt(int operatorCode) const {
    return !atEnd() && tokens_[at_].getOperatorCode() == operatorCode;
}

bool UniversalParser::beginsSubcommand(std::size_t at) const {
    if (!tokens_[at].isWordLike()) {
        return false;
    }
    const std::string_view word = tokens_[at].getString();
    return descriptor_.findSubcommand(word) != nullptr ||
           std::any_of(
               descriptor_.groups().begin(), descriptor_.groups().end(),
               [word](const GroupComDescriptor& group) { return group.findSubcommand(word) != nullptr; });
}

std::size_t UniversalParser::closingOf(std::size_t open) {
    if (closings_.empty()) {
        findClosings();
    }
    return closings_[open];
}

void UniversalParser::findClosings() {
    closings_.assign(tokens_.size(), tokens_.size());
    std::vector<std::size_t> brackets;
    std::vector<std::size_t> parentheses;
    const auto close = [this](std::vector<std::size_t>& open, std::size_t at) {
        if (!open.empty()) {
            closings_[open.back()] = at;
            open.pop_back();
        }
    };
    for (std::size_t i = 0; i < tokens_.size(); ++i) {
        const int code = tokens_[i].getOperatorCode();
        if (code == Code::openBracket) {
            brackets.push_back(i);
        } else if (code == Code::openParenthesis) {
            parentheses.push_back(i);
        } else if (code == Code::closeBracket) {
            close(brackets, i);
        } else if (code == Code::closeParenthesis) {
            close(parentheses, i);
        } else if (code == Code::slash && i + 1 < tokens_.size() && beginsSubcommand(i + 1)) {
            brackets.clear();  // a new subcommand: what is still open stays so
            parentheses.clear();
        }
    }
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

std::size_t UniversalParser::nextOffset() const {
    if (!atEnd()) {
        return tokens_[at_].offset();
    }
    return tokens_.empty() ? sequence_.command().arguments
                           : tokens_.back().offset() + tokens_.back().length();
}

std::string UniversalParser::nextAsTyped() const { return asTyped(tokens_[at_], sequence_.command()); }

bool UniversalParser::fail(std::string message, std::size_t offset) {
    error_ = ParseError{std::move(message), offset};
    return false;
}

}  // namespace vexa
