// One token of a command.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vexa {

enum class TokenKind : std::uint8_t { word, literal, number, operatorToken };

/// The code of the operator that is written as a word, ALL.
inline constexpr std::uint8_t kAllOperatorCode = 35;

/// A token: a word, a quoted literal, a number or an operator. Its texts are views that live as long as its
/// sequence, in the back end's character set.
class TokenInfoObj {
  public:
    TokenInfoObj() = default;
    /// `text` is the value (a literal without its quotes), `offset` and `length` say where it stands in the
    /// command.
    TokenInfoObj(TokenKind kind, int operatorCode, std::string_view text, std::size_t offset,
                 std::size_t length)
        : text_(text.data()),
          textLength_(static_cast<std::uint32_t>(text.size())),
          offset_(static_cast<std::uint32_t>(offset)),
          length_(static_cast<std::uint32_t>(length)),
          operatorCode_(static_cast<std::uint8_t>(operatorCode)),
          kind_(kind) {}

    [[nodiscard]] TokenKind kind() const { return kind_; }
    [[nodiscard]] bool isWord() const { return kind_ == TokenKind::word; }
    [[nodiscard]] bool isLiteral() const { return kind_ == TokenKind::literal; }
    [[nodiscard]] bool isNumber() const { return kind_ == TokenKind::number; }
    [[nodiscard]] bool isOperator() const { return kind_ == TokenKind::operatorToken; }
    /// A word or the operator ALL, which is written as one.
    [[nodiscard]] bool isWordLike() const { return isWord() || operatorCode_ == kAllOperatorCode; }
    /// A number without point and exponent that fits 32 bits.
    [[nodiscard]] bool isInteger() const { return getIntegerValue().has_value(); }

    /// The value: the text of a word, number or operator as typed, the content of a literal.
    [[nodiscard]] std::string_view getString() const { return {text_, textLength_}; }
    [[nodiscard]] std::string getUpperString() const;
    /// The operator's code, 0 for a token that is no operator.
    [[nodiscard]] int getOperatorCode() const { return operatorCode_; }
    [[nodiscard]] std::optional<std::int32_t> getIntegerValue() const;
    [[nodiscard]] std::optional<double> getDoubleValue() const;

    /// True when the token is a word (or ALL) that spells `text`, without regard to case. A literal never is.
    [[nodiscard]] bool spells(std::string_view text) const;

    /// Where the token begins in the command's text, and how many bytes it takes there.
    [[nodiscard]] std::size_t offset() const { return offset_; }
    [[nodiscard]] std::size_t length() const { return length_; }

  private:
    // A command may have millions of tokens; no text of one is longer than its command, which has 2 GiB at
    // most.
    const char* text_ = nullptr;
    std::uint32_t textLength_ = 0;
    std::uint32_t offset_ = 0;
    std::uint32_t length_ = 0;
    std::uint8_t operatorCode_ = 0;
    TokenKind kind_ = TokenKind::operatorToken;
};

}  // namespace vexa
