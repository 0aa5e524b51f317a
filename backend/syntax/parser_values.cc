// The extent of values: where the tokens that belong to a parameter end.

#include <algorithm>

#include "backend/syntax/refusal_texts.h"
#include "backend/syntax/universal_parser.h"

namespace vexa {

namespace {

using Spec = UPSpecTypes::ParamSpec;
using Code = TokenSequenceBase::OperatorCode;

/// A bracket is looked for among as many tokens before those of the whole command are matched.
constexpr std::size_t kNear = 32;

/// True for the forms that take a word of any spelling.
bool takesAnyWord(const ParamDescriptor& parameter) {
    return parameter.spec() == Spec::literalOrWord ||
           (parameter.spec() == Spec::word && !parameter.hasStringValues());
}

/// True when `word` is a string value or a qualifier of the parameter.
bool isOwnWord(const ParamDescriptor& parameter, std::string_view word) {
    return parameter.hasStringValue(word) || parameter.findQualifier(word) != nullptr;
}

}  // namespace

bool UniversalParser::takesOneToken(const ParamDescriptor& parameter) {
    return parameter.spec() == Spec::word || parameter.spec() == Spec::literalOrWord ||
           parameter.spec() == Spec::number || parameter.spec() == Spec::integer;
}

bool UniversalParser::takeBracketed(const ParamDescriptor& parameter, Tokens& value) {
    const std::size_t closing = closingOf(at_);
    if (closing == tokens_.size()) {
        return fail(composed(texts::kListNotClosed, {std::string(parameter.name()), "]"}), nextOffset());
    }
    value = tokens_.subspan(at_ + 1, closing - at_ - 1);
    at_ = closing + 1;
    return true;
}

bool UniversalParser::takeParenthesised(const ParamDescriptor& parameter, bool equalsGiven, Tokens& value) {
    if (!isAt(Code::openParenthesis)) {
        return !equalsGiven || refuseUnparenthesised(parameter);
    }
    const std::size_t closing = closingOf(at_);
    if (closing == tokens_.size()) {
        return fail(composed(texts::kListNotClosed, {std::string(parameter.name()), ")"}), nextOffset());
    }
    value = tokens_.subspan(at_, closing + 1 - at_);
    at_ = closing + 1;
    return true;
}

UniversalParser::Tokens UniversalParser::takePlain(const SubComDescriptor& descriptor,
                                                   const ParamDescriptor& parameter, bool equalsGiven) {
    const std::size_t from = at_;
    // Behind a written '=' the first word is the value, whatever it spells; but a value that may be empty is
    // empty where the next keyword stands with its own '='.
    const bool isEmpty = parameter.spec() == Spec::tokens && !atEnd() && beginsNextParameter(descriptor);
    if (equalsGiven ? !atEnd() && !isAt(Code::slash) && !isEmpty : beginsValue(descriptor, parameter)) {
        const bool whole = !takesOneToken(parameter) || parameter.isCheckedByCommand();
        at_ = whole ? behindItem() : at_ + 1;
        while (!takesOneToken(parameter) && !atEnd() && !endsValue(descriptor, parameter)) {
            at_ = behindItem();
        }
    }
    return tokens_.subspan(from, at_ - from);
}

std::size_t UniversalParser::behindItem() {
    if (!isAt(Code::openBracket) && !isAt(Code::openParenthesis)) {
        return at_ + 1;
    }
    const std::size_t closing = closingOf(at_);
    return closing == tokens_.size() ? at_ + 1 : closing + 1;
}

bool UniversalParser::beginsValue(const SubComDescriptor& descriptor,
                                  const ParamDescriptor& parameter) const {
    if (atEnd() || isAt(Code::slash)) {
        return false;
    }
    const TokenInfoObj& token = tokens_[at_];
    if (!token.isWordLike()) {
        return true;
    }
    if (descriptor.findParameter(token.getString()) != nullptr) {
        return false;
    }
    return isOwnWord(parameter, token.getString()) || !beginsSubcommand(at_) ||
           (takesAnyWord(parameter) && parameter.isValueRequired());
}

bool UniversalParser::beginsNextParameter(const SubComDescriptor& descriptor) const {
    return tokens_[at_].isWordLike() && descriptor.findParameter(tokens_[at_].getString()) != nullptr &&
           at_ + 1 < tokens_.size() && tokens_[at_ + 1].getOperatorCode() == Code::equalsSign;
}

bool UniversalParser::endsValue(const SubComDescriptor& descriptor, const ParamDescriptor& parameter) const {
    const TokenInfoObj& token = tokens_[at_];
    if (!token.isWordLike()) {
        return token.getOperatorCode() == Code::slash;
    }
    const bool isParameter = descriptor.findParameter(token.getString()) != nullptr;
    const bool assigned = at_ + 1 < tokens_.size() && tokens_[at_ + 1].getOperatorCode() == Code::equalsSign;
    if (isOwnWord(parameter, token.getString()) && !(isParameter && assigned)) {
        return false;
    }
    // No value goes on with a word and '=': that is a keyword, misspelt perhaps, and is refused as one.
    return isParameter || assigned || beginsSubcommand(at_);
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

bool UniversalParser::endsSubcommand(std::size_t at) const {
    return tokens_[at].getOperatorCode() == Code::slash && at + 1 < tokens_.size() &&
           beginsSubcommand(at + 1);
}

std::size_t UniversalParser::closingOf(std::size_t open) {
    if (closings_.empty()) {
        if (const std::optional<std::size_t> near = findNearClosing(open)) {
            return *near;
        }
        findClosings();
    }
    return closings_[open];
}

std::optional<std::size_t> UniversalParser::findNearClosing(std::size_t open) const {
    const bool bracket = tokens_[open].getOperatorCode() == Code::openBracket;
    const int opening = bracket ? Code::openBracket : Code::openParenthesis;
    const int closing = bracket ? Code::closeBracket : Code::closeParenthesis;
    const std::size_t end = std::min(open + kNear, tokens_.size());
    std::size_t depth = 0;
    for (std::size_t i = open; i < end; ++i) {
        const int code = tokens_[i].getOperatorCode();
        if (code == opening) {
            ++depth;
        } else if (code == closing && --depth == 0) {
            return i;
        } else if (endsSubcommand(i)) {
            return tokens_.size();
        }
    }
    return end == tokens_.size() ? std::optional<std::size_t>(end) : std::nullopt;
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
        } else if (endsSubcommand(i)) {
            brackets.clear();  // a new subcommand: what is still open stays so
            parentheses.clear();
        }
    }
}

std::size_t UniversalParser::nextOffset() const {
    if (!atEnd()) {
        return tokens_[at_].offset();
    }
    return tokens_.empty() ? sequence_.command().arguments
                           : tokens_.back().offset() + tokens_.back().length();
}

}  // namespace vexa
