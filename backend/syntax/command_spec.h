// What the parser found in a command.
//
// Results are views of the command's tokens and live as long as their sequence. A value is the tokens between
// its parameter's keyword and the next one, brackets taken off where the descriptor says so. The separators
// between the items of a list of words, literals or numbers, and between the values of a qualifier, are no
// part of the value; a value of free tokens keeps them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "backend/syntax/descriptors.h"
#include "backend/tokens/token.h"

namespace vexa {

class QualifierObj;

/// Tokens without the separators between them, and what keeps them alive.
struct TokenItems {
    std::span<const TokenInfoObj> tokens;
    std::shared_ptr<const std::vector<TokenInfoObj>> kept;  ///< null where no token had to be copied
};

/// `tokens` without their separators; they themselves when they hold none.
[[nodiscard]] TokenItems withoutSeparators(std::span<const TokenInfoObj> tokens);

/// A parameter that was given, and its value.
class ParamObj {
  public:
    ParamObj() = default;
    ParamObj(std::string_view name, const TokenInfoObj* keyword, std::span<const TokenInfoObj> value);

    [[nodiscard]] std::string_view name() const { return name_; }
    /// The token of the parameter's keyword, or null for free tokens.
    [[nodiscard]] const TokenInfoObj* keyword() const { return keyword_; }

    /// The text of a value that is one literal, one word or one operator; else empty.
    [[nodiscard]] std::string_view getStringToken() const;
    /// The same in capitals.
    [[nodiscard]] std::string getUpStringToken() const;
    /// The text of a value that is one literal, word or number; false, with `text` untouched, for anything
    /// else.
    [[nodiscard]] bool getStringGeneric(std::string_view& text) const;
    /// The text of a value that is one literal or word; `isLiteral` tells a quoted literal. False, with both
    /// untouched, for anything else.
    [[nodiscard]] bool getStringOrLiteral(std::string_view& text, bool& isLiteral) const;
    /// True when the value is the one operator of that code.
    [[nodiscard]] bool isOperatorValue(int operatorCode) const;
    /// True when the value is one word, literal or operator that spells `text`, without regard to case.
    [[nodiscard]] bool isStringValue(std::string_view text) const;
    [[nodiscard]] bool isStringValueCase(std::string_view text) const { return isStringValue(text); }
    /// A value that is one integer: a number without point and exponent that fits 32 bits.
    [[nodiscard]] std::optional<std::int32_t> getIntegerValue() const;
    /// A value that is one number.
    [[nodiscard]] std::optional<double> getDoubleValue() const;
    /// The texts of a value of words or literals; false, with `texts` holding what came before, at anything
    /// else. Separators between the items are passed over.
    [[nodiscard]] bool getStringList(std::vector<std::string_view>& texts) const;
    /// The numbers of a value of numbers, as above.
    [[nodiscard]] bool getNumberList(std::vector<double>& numbers) const;
    /// The quoted literals of the value, whatever else stands between them; the list is replaced.
    void getLiterals(std::vector<std::string_view>& literals) const;

    /// True when there is at least one token.
    [[nodiscard]] bool isTokenList() const { return !value_.empty(); }
    [[nodiscard]] std::span<const TokenInfoObj> getTokenList() const { return value_; }
    [[nodiscard]] std::size_t getTokenListSize() const { return value_.size(); }
    /// The token at `index`, which must be below the size.
    [[nodiscard]] const TokenInfoObj& getTokenObj(std::size_t index) const;
    /// The texts of all tokens, separated by a blank.
    [[nodiscard]] std::string joinedTokens() const;

    /// The qualifiers of a value of the forms 26, 27 and 28, in the order written. `descriptor` names the
    /// form and the qualifiers; a qualifier that it does not know is listed all the same. False when the
    /// tokens have another shape; the list then holds what came before.
    [[nodiscard]] bool getQualifiers(const ParamDescriptor& descriptor,
                                     std::vector<QualifierObj>& qualifiers) const;
    /// The one qualifier, with its value, of a value of form 27, or of free tokens that have that form:
    /// INCHES(2 3), TOP 5, LASTROW. Nothing when the tokens have another shape.
    [[nodiscard]] std::optional<QualifierObj> getQualifier() const;

  private:
    std::string_view name_;
    const TokenInfoObj* keyword_ = nullptr;
    std::span<const TokenInfoObj> value_;
};

/// A qualifier inside a value, with its own value: the tokens behind '=' or between the parentheses.
class QualifierObj : public ParamObj {
  public:
    /// `value` may hold separators, which are left out.
    QualifierObj(std::string_view name, const TokenInfoObj* keyword, std::span<const TokenInfoObj> value)
        : QualifierObj(name, keyword, withoutSeparators(value)) {}

  private:
    QualifierObj(std::string_view name, const TokenInfoObj* keyword, TokenItems items)
        : ParamObj(name, keyword, items.tokens), kept_(std::move(items.kept)) {}

    std::shared_ptr<const std::vector<TokenInfoObj>> kept_;
};

/// A subcommand that was given.
class SubComObj {
  public:
    SubComObj(std::string_view name, const TokenInfoObj* keyword) : name_(name), keyword_(keyword) {}

    [[nodiscard]] std::string_view name() const { return name_; }
    [[nodiscard]] const TokenInfoObj* keyword() const { return keyword_; }
    /// The parameter of that name, or null when it was not given.
    [[nodiscard]] const ParamObj* getParamObj(std::string_view name) const;
    /// The unnamed parameter: the free tokens of the subcommand.
    [[nodiscard]] const ParamObj& exportParamObj() const { return free_; }
    [[nodiscard]] const std::vector<ParamObj>& parameters() const { return parameters_; }

  private:
    friend class UniversalParser;

    std::string_view name_;
    const TokenInfoObj* keyword_;
    ParamObj free_;
    std::vector<ParamObj> parameters_;
};

/// Subcommands in the order written.
class SubComList {
  public:
    /// The first subcommand of that name, or null.
    [[nodiscard]] const SubComObj* getSubComObj(std::string_view name) const;
    /// All subcommands of that name, in the order written; the list is replaced.
    void getSubComObj(std::vector<const SubComObj*>& list, std::string_view name) const;
    [[nodiscard]] bool hasSubCom(std::string_view name) const { return getSubComObj(name) != nullptr; }

  private:
    friend class UniversalParser;

    std::vector<SubComObj> subcommands_;
};

/// One selection group that was given.
class GroupComObj : public SubComList {};

/// A parsed command: made empty, filled by the parser.
class CommandSpec : public SubComList {
  public:
    /// All groups that begin with the subcommand `leading`, in the order written; the list is replaced.
    void getGroupComObj(std::vector<const GroupComObj*>& list, std::string_view leading) const;

  private:
    friend class UniversalParser;

    std::vector<GroupComObj> groups_;
    std::vector<std::shared_ptr<const std::vector<TokenInfoObj>>> kept_;  // values that lost separators
};

/// Compares texts without regard to case.
[[nodiscard]] bool AreStringsEqualCase(std::string_view left, std::string_view right);

}  // namespace vexa
