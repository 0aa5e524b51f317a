// The tokens of one command.
#pragma once

#include <cstddef>
#include <list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "backend/tokens/command_text.h"
#include "backend/tokens/token.h"

namespace vexa {

/// Why a command was refused, or what is ignored in it: at the byte `offset` of the command's text.
struct CommandError {
    std::string message;  ///< UTF-8
    std::size_t offset = 0;
};

/// A sequence of tokens, and what it was cut from.
class TokenSequenceBase {
  public:
    /// Codes of the operators. Commands rely on the numbers of the first eight.
    enum OperatorCode : int {
        equalsSign = 3,
        asterisk = 10,
        openParenthesis = 13,
        closeParenthesis = 14,
        separator = 17,  ///< ',' between the items of a list
        all = 35,        ///< the word ALL
        openBracket = 36,
        closeBracket = 37,

        plus = 40,
        minus,
        slash,
        power,
        less,
        lessOrEqual,
        greater,
        greaterOrEqual,
        notEqual,
        tilde,
        ampersand,
        verticalBar,
        exclamation,
        semicolon,
        colon,
        period,
        question,
        percent,
        caret,
        openBrace,
        closeBrace,
        backslash,
        backquote,
    };

    virtual ~TokenSequenceBase() = default;
    TokenSequenceBase(const TokenSequenceBase&) = delete;
    TokenSequenceBase& operator=(const TokenSequenceBase&) = delete;

    /// The tokens that could be read: all of them, or those before the error.
    [[nodiscard]] std::span<const TokenInfoObj> tokens() const { return tokens_; }
    [[nodiscard]] const std::optional<CommandError>& error() const { return error_; }
    /// The command that the tokens were cut from; it must outlive the sequence.
    [[nodiscard]] const CommandText& command() const { return *command_; }

  protected:
    /// Cuts `command` into tokens, from behind its name. The command must outlive the sequence.
    explicit TokenSequenceBase(const CommandText& command);

  private:
    friend class Lexer;

    const CommandText* command_;
    std::vector<TokenInfoObj> tokens_;
    std::list<std::string> joined_;  // values of literals that do not stand in the text as they are
    std::optional<CommandError> error_;
};

/// The tokens of the command now being executed.
class VEXA_TokenSequence : public TokenSequenceBase {
  public:
    /// `current` is always true: the sequence of the current command. Without a current command it is empty.
    explicit VEXA_TokenSequence(bool current);
};

/// The tokens of any command text; for whoever reads commands without executing them.
class CommandTokens : public TokenSequenceBase {
  public:
    explicit CommandTokens(const CommandText& command) : TokenSequenceBase(command) {}
};

}  // namespace vexa
