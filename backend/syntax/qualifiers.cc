// Takes values apart that are made of qualifiers.

#include <cstddef>

#include "backend/syntax/command_spec.h"
#include "backend/tokens/token_sequence.h"

namespace vexa {

namespace {

using Tokens = std::span<const TokenInfoObj>;

bool hasCode(const TokenInfoObj& token, int code) { return token.getOperatorCode() == code; }

/// Index of the parenthesis that closes the one at `open`, or the size when there is none.
std::size_t closingParenthesis(Tokens tokens, std::size_t open) {
    std::size_t depth = 0;
    for (std::size_t i = open; i < tokens.size(); ++i) {
        if (hasCode(tokens[i], TokenSequenceBase::openParenthesis)) {
            ++depth;
        } else if (hasCode(tokens[i], TokenSequenceBase::closeParenthesis) && --depth == 0) {
            return i;
        }
    }
    return tokens.size();
}

/// Reads qualifiers from left to right out of the tokens of one value.
class QualifierReader {
  public:
    QualifierReader(Tokens tokens, std::vector<QualifierObj>& qualifiers)
        : tokens_(tokens), qualifiers_(qualifiers) {}

    /// NAME(values) or NAME values, and nothing behind it.
    bool readOne() {
        if (atEnd() || !tokens_[at_].isWordLike()) {
            return false;
        }
        const TokenInfoObj& name = tokens_[at_++];
        Tokens value = tokens_.subspan(at_);
        if (!value.empty() && hasCode(value[0], TokenSequenceBase::openParenthesis)) {
            const std::size_t closing = closingParenthesis(value, 0);
            if (closing + 1 != value.size()) {
                return false;
            }
            value = value.subspan(1, closing - 1);
        }
        add(name, value);
        return true;
    }

    /// NAME=value ..., inside parentheses.
    bool readAssignments() {
        if (atEnd()) {
            return true;
        }
        if (!hasCode(tokens_[0], TokenSequenceBase::openParenthesis) ||
            closingParenthesis(tokens_, 0) + 1 != tokens_.size()) {
            return false;
        }
        tokens_ = tokens_.subspan(1, tokens_.size() - 2);
        return readEach([this](const TokenInfoObj& name) { return readAssigned(name); });
    }

    /// NAME(values) ...
    bool readLists() {
        return readEach([this](const TokenInfoObj& name) {
            return !atEnd() && hasCode(tokens_[at_], TokenSequenceBase::openParenthesis) &&
                   readParenthesised(name);
        });
    }

  private:
    [[nodiscard]] bool atEnd() const { return at_ >= tokens_.size(); }

    template <typename ReadValue>
    bool readEach(ReadValue readValue) {
        while (!atEnd()) {
            if (hasCode(tokens_[at_], TokenSequenceBase::separator)) {
                ++at_;
                continue;
            }
            if (!tokens_[at_].isWordLike() || !readValue(tokens_[at_++])) {
                return false;
            }
        }
        return true;
    }

    bool readAssigned(const TokenInfoObj& name) {
        if (!atEnd() && hasCode(tokens_[at_], TokenSequenceBase::equalsSign)) {
            ++at_;
        }
        if (!atEnd() && hasCode(tokens_[at_], TokenSequenceBase::openParenthesis)) {
            return readParenthesised(name);
        }
        const bool nextQualifier = at_ + 1 < tokens_.size() && tokens_[at_].isWordLike() &&
                                   hasCode(tokens_[at_ + 1], TokenSequenceBase::equalsSign);
        const bool noValue = atEnd() || nextQualifier || hasCode(tokens_[at_], TokenSequenceBase::separator);
        add(name, tokens_.subspan(at_, noValue ? 0 : 1));
        at_ += noValue ? 0 : 1;
        return true;
    }

    bool readParenthesised(const TokenInfoObj& name) {
        const std::size_t closing = closingParenthesis(tokens_, at_);
        if (closing == tokens_.size()) {
            return false;
        }
        add(name, tokens_.subspan(at_ + 1, closing - at_ - 1));
        at_ = closing + 1;
        return true;
    }

    void add(const TokenInfoObj& name, Tokens value) {
        qualifiers_.emplace_back(name.getString(), &name, value);
    }

    Tokens tokens_;
    std::vector<QualifierObj>& qualifiers_;
    std::size_t at_ = 0;
};

}  // namespace

bool ParamObj::getQualifiers(const ParamDescriptor& descriptor, std::vector<QualifierObj>& qualifiers) const {
    qualifiers.clear();
    QualifierReader reader(value_, qualifiers);
    switch (descriptor.spec()) {
        case UPSpecTypes::ParamSpec::qualifierList:
            return reader.readAssignments();
        case UPSpecTypes::ParamSpec::qualifiedLists:
            return reader.readLists();
        default:
            return reader.readOne();
    }
}

}  // namespace vexa
