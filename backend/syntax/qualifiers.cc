#include "backend/syntax/qualifiers.h"

#include <utility>

#include "backend/tokens/token_sequence.h"

namespace vexa {

namespace {

using Tokens = std::span<const TokenInfoObj>;

bool hasCode(const TokenInfoObj& token, int code) { return token.getOperatorCode() == code; }

/// Reads qualifiers from left to right out of the tokens of one value. Every reader leaves `at_` on the token
/// that does not fit when it answers false.
class QualifierReader {
  public:
    QualifierReader(Tokens tokens, std::vector<QualifierObj>& qualifiers)
        : tokens_(tokens), end_(tokens.size()), qualifiers_(qualifiers) {}

    [[nodiscard]] std::size_t at() const { return at_; }

    /// NAME(values) or NAME values, and nothing behind it.
    bool readOne() {
        if (atEnd() || !tokens_[at_].isWordLike()) {
            return false;
        }
        const TokenInfoObj& name = tokens_[at_++];
        if (isAt(TokenSequenceBase::openParenthesis)) {
            return readParenthesised(name) && atEnd();
        }
        if (isAt(TokenSequenceBase::equalsSign)) {
            return false;
        }
        add(name, tokens_.subspan(at_));
        return true;
    }

    /// NAME=value ..., inside parentheses.
    bool readAssignments() {
        if (atEnd()) {
            return true;
        }
        if (!isAt(TokenSequenceBase::openParenthesis)) {
            return false;
        }
        const std::size_t closing = closingParenthesis(at_);
        if (closing + 1 != end_) {
            at_ = closing == end_ ? at_ : closing + 1;
            return false;
        }
        end_ = closing;
        ++at_;
        return readEach([this](const TokenInfoObj& name) { return readAssigned(name); });
    }

    /// NAME(values) ...
    bool readLists() {
        return readEach([this](const TokenInfoObj& name) {
            return isAt(TokenSequenceBase::openParenthesis) && readParenthesised(name);
        });
    }

  private:
    [[nodiscard]] bool atEnd() const { return at_ >= end_; }
    [[nodiscard]] bool isAt(int code) const { return !atEnd() && hasCode(tokens_[at_], code); }

    /// Index of the parenthesis that closes the one at `open`, or the end when there is none.
    [[nodiscard]] std::size_t closingParenthesis(std::size_t open) const {
        std::size_t depth = 0;
        for (std::size_t i = open; i < end_; ++i) {
            if (hasCode(tokens_[i], TokenSequenceBase::openParenthesis)) {
                ++depth;
            } else if (hasCode(tokens_[i], TokenSequenceBase::closeParenthesis) && --depth == 0) {
                return i;
            }
        }
        return end_;
    }

    template <typename ReadValue>
    bool readEach(ReadValue readValue) {
        while (!atEnd()) {
            if (isAt(TokenSequenceBase::separator)) {
                ++at_;
                continue;
            }
            if (!tokens_[at_].isWordLike() || !readValue(tokens_[at_++])) {
                return false;
            }
        }
        return true;
    }

    /// The value behind '='. A number, a literal or a list in parentheses may also stand without it.
    bool readAssigned(const TokenInfoObj& name) {
        const bool equalsGiven = isAt(TokenSequenceBase::equalsSign);
        at_ += equalsGiven ? 1 : 0;
        if (isAt(TokenSequenceBase::openParenthesis)) {
            return readParenthesised(name);
        }
        const bool noValue =
            atEnd() || isAt(TokenSequenceBase::separator) ||
            (equalsGiven ? nextIsAssigned() : tokens_[at_].isOperator() || tokens_[at_].isWord());
        add(name, tokens_.subspan(at_, noValue ? 0 : 1));
        at_ += noValue ? 0 : 1;
        return true;
    }

    /// True when another qualifier with its '=' follows.
    [[nodiscard]] bool nextIsAssigned() const {
        return at_ + 1 < end_ && tokens_[at_].isWordLike() &&
               hasCode(tokens_[at_ + 1], TokenSequenceBase::equalsSign);
    }

    bool readParenthesised(const TokenInfoObj& name) {
        const std::size_t closing = closingParenthesis(at_);
        if (closing == end_) {
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
    std::size_t end_;
    std::vector<QualifierObj>& qualifiers_;
    std::size_t at_ = 0;
};

bool read(UPSpecTypes::ParamSpec spec, QualifierReader& reader) {
    switch (spec) {
        case UPSpecTypes::ParamSpec::qualifierList:
            return reader.readAssignments();
        case UPSpecTypes::ParamSpec::qualifiedLists:
            return reader.readLists();
        default:
            return reader.readOne();
    }
}

}  // namespace

std::optional<std::size_t> readQualifiers(UPSpecTypes::ParamSpec spec, Tokens value,
                                          std::vector<QualifierObj>& qualifiers) {
    QualifierReader reader(value, qualifiers);
    return read(spec, reader) ? std::nullopt : std::optional<std::size_t>(reader.at());
}

bool ParamObj::getQualifiers(const ParamDescriptor& descriptor, std::vector<QualifierObj>& qualifiers) const {
    qualifiers.clear();
    return !readQualifiers(descriptor.spec(), value_, qualifiers);
}

std::optional<QualifierObj> ParamObj::getQualifier() const {
    std::vector<QualifierObj> qualifiers;
    if (readQualifiers(UPSpecTypes::ParamSpec::qualifiedValue, value_, qualifiers)) {
        return std::nullopt;
    }
    return std::move(qualifiers.front());
}

}  // namespace vexa
