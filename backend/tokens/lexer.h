// Cuts the text of a command into tokens. Internal to this folder.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "backend/text/character_set.h"
#include "backend/tokens/token_sequence.h"

namespace vexa {

/// Reads one command from left to right and fills a sequence. Linear in the length of the text.
class Lexer {
  public:
    explicit Lexer(TokenSequenceBase& sequence);

    /// Reads to the end of the command or to the first error, which the sequence then holds.
    void run();

  private:
    [[nodiscard]] bool atEnd() const { return at_ >= text_.size(); }
    [[nodiscard]] char peek(std::size_t ahead = 0) const;
    [[nodiscard]] bool atNumber() const;
    [[nodiscard]] bool precededByValue() const;
    [[nodiscard]] bool closesWithinAWord(std::size_t from) const;
    [[nodiscard]] std::size_t characterLength(std::size_t offset) const;

    /// Skips blanks and comments; false after an error.
    bool skipBlanks();
    bool readToken();
    void readWord();
    bool readNumber();
    bool readLiteral();
    bool readOperator();
    bool refuseControlCharacter();
    /// Joins the literal just read to the one that a '+' before it left open.
    void joinLiterals();

    /// The content of the literal that begins here, quotes undoubled; advances behind it. False when it is
    /// not closed.
    bool readLiteralContent(std::string_view& content);
    void makeRoom();
    void add(TokenKind kind, int operatorCode, std::string_view text, std::size_t from);
    bool fail(std::size_t offset, std::string message);

    TokenSequenceBase& sequence_;
    std::string_view text_;
    const CharacterSet& set_;
    const bool byteSteps_;  // no byte of a longer character is ASCII
    std::size_t at_;
};

}  // namespace vexa
