#include "backend/syntax/universal_parser.h"

#include <algorithm>
#include <utility>

#include "backend/pivot/output_log.h"
#include "backend/strings/dictionary.h"
#include "backend/syntax/parse_mode.h"
#include "backend/syntax/value_check.h"

namespace vexa {

namespace {

using Spec = UPSpecTypes::ParamSpec;
using Code = TokenSequenceBase::OperatorCode;

/// Most subcommands or parameters that room is made for before they are met.
constexpr std::size_t kExpected = 8;

/// Free tokens and lists of qualifiers may be empty also where a value is required.
bool mayBeEmpty(const ParamDescriptor& parameter) {
    return !parameter.isValueRequired() || parameter.spec() == Spec::tokens ||
           parameter.spec() == Spec::qualifierList;
}

bool takesItems(Spec spec) { return spec == Spec::words || spec == Spec::literals || spec == Spec::numbers; }

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
        error_ = sequence_.error();
    } else {
        parse();
    }
    if (error_) {
        OutputLog::current().publish(
            SyntaxErrorReported{error_->message, placeOf(sequence_.command(), error_->offset)});
        return 1;
    }
    for (CommandError& warning : warnings_) {
        OutputLog::current().publish(
            SyntaxWarned{std::move(warning.message), placeOf(sequence_.command(), warning.offset)});
    }
    return mode != nullptr && mode->mode() == ParseMode::checkOnly ? 1 : 0;
}

bool UniversalParser::parse() {
    spec_.subcommands_.reserve(std::min(descriptor_.subcommands().size(), kExpected));
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
    return parseBody(*leading, result);
}

bool UniversalParser::parseNext() {
    const bool slash = isAt(Code::slash);
    const std::size_t slashOffset = nextOffset();
    at_ += slash ? 1 : 0;
    if (atEnd() || !tokens_[at_].isWordLike()) {
        return slash ? refuseSlash(slashOffset) : refuseSubcommand(tokens_[at_]);
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
        return fail(composed("Subcommand ^1 is given twice; it can be given once."_text,
                             {std::string(descriptor.name())}),
                    keyword.offset());
    }
    return parseBody(descriptor, list.subcommands_.emplace_back(descriptor.name(), &keyword));
}

bool UniversalParser::parseGroupSubcommand(const GroupComDescriptor& group,
                                           const SubComDescriptor& descriptor, const TokenInfoObj& keyword) {
    const SubComDescriptor* const leading = group.leading();
    const std::string_view opener = leading == nullptr ? std::string_view() : leading->name();
    if (&descriptor == leading) {
        startGroup();
    } else if (spec_.groups_.empty() || spec_.groups_.back().subcommands_.front().name() != opener) {
        return fail(
            composed("Subcommand ^1 comes before the first ^2. Write the ^2 that it belongs to before "
                     "it."_text,
                     {std::string(descriptor.name()), std::string(opener)}),
            keyword.offset());
    }
    SubComList& current = spec_.groups_.back();
    if (!parseSubcommand(descriptor, current, keyword)) {
        return false;
    }
    current.subcommands_.back().parameters_.shrink_to_fit();
    return true;
}

/// A command may have very many groups, so none keeps more memory than it needs.
void UniversalParser::startGroup() {
    if (!spec_.groups_.empty()) {
        spec_.groups_.back().subcommands_.shrink_to_fit();
    }
    spec_.groups_.emplace_back();
}

bool UniversalParser::parseBody(const SubComDescriptor& descriptor, SubComObj& result) {
    if (descriptor.spec() == UPSpecTypes::SubComSpec::freeTokens) {
        takeFreeTokens(result);
        return true;
    }
    result.parameters_.reserve(std::min(descriptor.parameters().size(), kExpected));
    while (!atEnd() && !isAt(Code::slash)) {
        const TokenInfoObj& token = tokens_[at_];
        const ParamDescriptor* const parameter =
            token.isWordLike() ? descriptor.findParameter(token.getString()) : nullptr;
        const bool given = parameter != nullptr && result.getParamObj(parameter->name()) != nullptr;
        const bool again =
            given && at_ + 1 < tokens_.size() && tokens_[at_ + 1].getOperatorCode() == Code::equalsSign;
        if ((parameter == nullptr || given) && !again && beginsSubcommand(at_)) {
            break;
        }
        if (parameter == nullptr) {
            return refuseParameter(descriptor, result);
        }
        if (given) {
            return fail(composed(descriptor.name().empty()
                                     ? "^1 is given twice; it can be given once in ^2."_text
                                     : "^1 is given twice; it can be given once in subcommand ^2."_text,
                                 {std::string(parameter->name()), nameOf(descriptor)}),
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
    // The slash may be left out before the first subcommand, so its name ends the command's own tokens.
    const bool leading = result.name().empty();
    while (!atEnd() && !isAt(Code::slash) && !(leading && at_ > from && beginsSubcommand(at_))) {
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
            return fail(composed("^1 takes no value. Leave out \"=\" and what follows it."_text,
                                 {std::string(parameter.name())}),
                        nextOffset());
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
        return refuseMissingValue(descriptor, parameter, equalsGiven, offset);
    }
    if (auto error = checkValue(parameter, value, sequence_.command())) {
        return fail(std::move(error->message), error->offset.value_or(offset));
    }
    if (auto warning = checkRead(parameter, value, sequence_.command())) {
        warnings_.push_back({std::move(warning->message), warning->offset.value_or(offset)});
    }
    result.parameters_.emplace_back(parameter.name(), &keyword, value);
    return true;
}

bool UniversalParser::takeValue(const SubComDescriptor& descriptor, const ParamDescriptor& parameter,
                                bool equalsGiven, Tokens& value) {
    const UPSpecTypes::BracketOptions brackets = parameter.brackets();
    if (brackets != UPSpecTypes::BracketOptions::none && isAt(Code::openBracket)) {
        if (!takeBracketed(parameter, value)) {
            return false;
        }
    } else if (brackets == UPSpecTypes::BracketOptions::required && !parameter.isCheckedByCommand()) {
        return refuseUnbracketed(parameter);
    } else if (parameter.spec() == Spec::qualifierList) {
        return takeParenthesised(parameter, equalsGiven, value);
    } else {
        value = takePlain(descriptor, parameter, equalsGiven);
    }
    if (takesItems(parameter.spec())) {
        TokenItems items = withoutSeparators(value);
        value = items.tokens;
        if (items.kept != nullptr) {
            spec_.kept_.push_back(std::move(items.kept));
        }
    }
    return true;
}

}  // namespace vexa
