#include "backend/tokens/lexer.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "backend/strings/dictionary.h"

namespace vexa {

namespace {

enum ByteClass : std::uint8_t {
    blank = 1,
    wordStart = 2,
    digit = 4,
    wordRest = 8,  // what may follow in a word besides wordStart and digit
};

constexpr std::array<std::uint8_t, 256> makeClasses() {
    std::array<std::uint8_t, 256> classes{};
    for (const char c : {' ', '\t', '\n', '\r', '\f', '\v'}) {
        classes[static_cast<unsigned char>(c)] = blank;
    }
    for (std::size_t c = 'a'; c <= 'z'; ++c) {
        classes[c] = wordStart;
        classes[c - 'a' + 'A'] = wordStart;
    }
    for (std::size_t c = '0'; c <= '9'; ++c) {
        classes[c] = digit;
    }
    for (const char c : {'_', '@', '#', '$'}) {
        classes[static_cast<unsigned char>(c)] = wordStart;
    }
    for (std::size_t c = 128; c < 256; ++c) {
        classes[c] = wordStart;
    }
    classes['.'] = wordRest;
    return classes;
}

constexpr std::array<std::uint8_t, 256> kClasses = makeClasses();

constexpr bool is(char c, unsigned classes) {
    return (kClasses[static_cast<unsigned char>(c)] & classes) != 0;
}

using Code = TokenSequenceBase::OperatorCode;

struct OperatorSpelling {
    char text;
    Code code;
};

constexpr OperatorSpelling kOperators[] = {
    {'=', Code::equalsSign},
    {'*', Code::asterisk},
    {'(', Code::openParenthesis},
    {')', Code::closeParenthesis},
    {',', Code::separator},
    {'[', Code::openBracket},
    {']', Code::closeBracket},
    {'+', Code::plus},
    {'-', Code::minus},
    {'/', Code::slash},
    {'<', Code::less},
    {'>', Code::greater},
    {'~', Code::tilde},
    {'&', Code::ampersand},
    {'|', Code::verticalBar},
    {'!', Code::exclamation},
    {';', Code::semicolon},
    {':', Code::colon},
    {'.', Code::period},
    {'?', Code::question},
    {'%', Code::percent},
    {'^', Code::caret},
    {'{', Code::openBrace},
    {'}', Code::closeBrace},
    {'\\', Code::backslash},
    {'`', Code::backquote},
};

/// The code of every operator of one character, by that character; 0 for what is none.
constexpr std::array<std::uint8_t, 128> makeOperatorCodes() {
    std::array<std::uint8_t, 128> codes{};
    for (const OperatorSpelling& each : kOperators) {
        codes[static_cast<unsigned char>(each.text)] = static_cast<std::uint8_t>(each.code);
    }
    return codes;
}

constexpr std::array<std::uint8_t, 128> kOperatorCodes = makeOperatorCodes();

/// The code of the operator of two characters, 0 when they are none.
constexpr int pairCode(char first, char second) {
    if (second == '=') {
        return first == '<'   ? Code::lessOrEqual
               : first == '>' ? Code::greaterOrEqual
               : first == '~' ? Code::notEqual
                              : 0;
    }
    return first == '<' && second == '>' ? Code::notEqual : first == '*' && second == '*' ? Code::power : 0;
}

bool spellsAll(std::string_view word) {
    return word.size() == 3 && (word[0] | 0x20) == 'a' && (word[1] | 0x20) == 'l' && (word[2] | 0x20) == 'l';
}

}  // namespace

Lexer::Lexer(TokenSequenceBase& sequence)
    : sequence_(sequence),
      text_(sequence.command_->text),
      set_(currentCharacterSet()),
      byteSteps_(set_.isUtf8() || set_.isSingleByte()),
      at_(std::min(sequence.command_->arguments, text_.size())) {}

void Lexer::run() {
    sequence_.tokens_.reserve(std::min<std::size_t>((text_.size() - at_) / 4 + 4, 64));
    while (skipBlanks() && !atEnd()) {
        if (!readToken()) {
            return;
        }
    }
}

char Lexer::peek(std::size_t ahead) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }

std::size_t Lexer::characterLength(std::size_t offset) const {
    if (byteSteps_ || static_cast<unsigned char>(text_[offset]) < 128) {
        return 1;  // in UTF-8 every byte of a longer character is above 127, so byte steps are safe
    }
    return std::max<std::size_t>(1, set_.characterLength(text_.data() + offset, text_.size() - offset));
}

bool Lexer::skipBlanks() {
    while (!atEnd()) {
        if (is(text_[at_], blank)) {
            ++at_;
        } else if (text_[at_] == '/' && peek(1) == '*') {
            const std::size_t end = text_.find("*/", at_ + 2);
            if (end == std::string_view::npos) {
                return fail(at_, translated("This comment is not closed: \"*/\" is missing."_text));
            }
            at_ = end + 2;
        } else {
            break;
        }
    }
    return true;
}

bool Lexer::readToken() {
    const char c = text_[at_];
    if (is(c, wordStart)) {
        readWord();
        return true;
    }
    if (c == '\'' || c == '"') {
        return readLiteral();
    }
    return atNumber() ? readNumber() : readOperator();
}

void Lexer::readWord() {
    const std::size_t from = at_;
    while (!atEnd() && is(text_[at_], wordStart | wordRest | digit)) {
        at_ += characterLength(at_);
    }
    const std::string_view word = text_.substr(from, at_ - from);
    if (spellsAll(word)) {
        add(TokenKind::operatorToken, TokenSequenceBase::all, word, from);
    } else {
        add(TokenKind::word, 0, word, from);
    }
}

/// A word with a blank behind it is taken for a keyword that its value follows without '='.
bool Lexer::precededByValue() const {
    if (sequence_.tokens_.empty() || sequence_.tokens_.back().isOperator()) {
        return false;
    }
    const TokenInfoObj& before = sequence_.tokens_.back();
    return !before.isWord() || before.offset() + before.length() == at_;
}

bool Lexer::atNumber() const {
    std::size_t ahead = 0;
    if ((text_[at_] == '-' || text_[at_] == '+') && !precededByValue()) {
        ahead = 1;
    }
    if (peek(ahead) == '.') {
        ++ahead;
    }
    return is(peek(ahead), digit);
}

bool Lexer::readNumber() {
    const std::size_t from = at_;
    if (text_[at_] == '-' || text_[at_] == '+') {
        ++at_;
    }
    const auto skipDigits = [this] {
        while (!atEnd() && is(text_[at_], digit)) {
            ++at_;
        }
    };
    skipDigits();
    if (peek() == '.') {
        ++at_;
        skipDigits();
    }
    const std::size_t sign = peek(1) == '-' || peek(1) == '+' ? 2 : 1;
    if ((peek() == 'e' || peek() == 'E') && is(peek(sign), digit)) {
        at_ += sign;
        skipDigits();
    }
    if (!atEnd() && is(text_[at_], wordStart)) {
        return fail(
            from,
            translated(
                "A number runs into a word here. Put a blank between them, or put the text in quotes."_text));
    }
    add(TokenKind::number, 0, text_.substr(from, at_ - from), from);
    return true;
}

bool Lexer::readLiteralContent(std::string_view& content) {
    const char quote = text_[at_];
    const std::size_t from = ++at_;
    std::string* undoubled = nullptr;
    std::size_t copied = from;
    while (!atEnd() && text_[at_] != '\n' && text_[at_] != '\0') {
        if (text_[at_] != quote) {
            at_ += characterLength(at_);
            continue;
        }
        if (peek(1) != quote) {
            content = text_.substr(copied, at_ - copied);
            if (undoubled != nullptr) {
                undoubled->append(content);
                content = *undoubled;
            }
            ++at_;
            return true;
        }
        if (undoubled == nullptr) {
            undoubled = &sequence_.joined_.emplace_back();
        }
        undoubled->append(text_.substr(copied, at_ + 1 - copied));
        at_ += 2;
        copied = at_;
    }
    return false;
}

/// True when the last literal before `from` has a word right behind it: its quote was meant as an apostrophe.
bool Lexer::closesWithinAWord(std::size_t from) const {
    const std::span<const TokenInfoObj> tokens = sequence_.tokens();
    const auto literal = std::find_if(tokens.rbegin(), tokens.rend(),
                                      [](const TokenInfoObj& token) { return token.isLiteral(); });
    if (literal == tokens.rend()) return false;
    const std::size_t end = literal->offset() + literal->length();
    return end < from && text_[end - 1] == text_[from] && is(text_[end], wordStart | digit);
}

bool Lexer::readLiteral() {
    const std::size_t from = at_;
    std::string_view content;
    if (!readLiteralContent(content)) {
        if (!atEnd() && text_[at_] == '\0') {
            return refuseControlCharacter();  // many who read the text later would take it for its end
        }
        if (closesWithinAWord(from)) {
            return fail(from,
                        composed("The text before this ^1 ended within a word, and the one that begins here "
                                 "is not closed. A quote inside a text is written twice: 'it''s'."_text,
                                 {std::string(1, text_[from])}));
        }
        return fail(from,
                    composed("This text is not closed before the end of its line: ^1 is missing. A longer "
                             "text is written in pieces: 'one ' + 'two'."_text,
                             {std::string(1, text_[from])}));
    }
    add(TokenKind::literal, 0, content, from);
    joinLiterals();
    return true;
}

void Lexer::joinLiterals() {
    std::vector<TokenInfoObj>& tokens = sequence_.tokens_;
    const std::size_t count = tokens.size();
    if (count < 3 || tokens[count - 2].getOperatorCode() != TokenSequenceBase::plus ||
        !tokens[count - 3].isLiteral()) {
        return;
    }
    const TokenInfoObj first = tokens[count - 3];
    const std::string_view second = tokens[count - 1].getString();
    // Pieces are appended to the text that holds the first of them, so that many pieces cost no more than
    // their length.
    std::string piece(second);
    if (!sequence_.joined_.empty() && sequence_.joined_.back().data() == second.data()) {
        sequence_.joined_.pop_back();
    }
    if (sequence_.joined_.empty() || sequence_.joined_.back().data() != first.getString().data()) {
        sequence_.joined_.emplace_back(first.getString());
    }
    std::string& whole = sequence_.joined_.back();
    whole += piece;
    tokens.resize(count - 3);
    tokens.emplace_back(TokenKind::literal, 0, whole, first.offset(), at_ - first.offset());
}

bool Lexer::refuseControlCharacter() {
    return fail(
        at_,
        composed(
            "There is a control character (code ^1) here. It has no meaning in a command; delete it."_text,
            {std::to_string(static_cast<unsigned char>(text_[at_]))}));
}

bool Lexer::readOperator() {
    const char c = text_[at_];
    const std::size_t from = at_;
    const int pair = pairCode(c, peek(1));
    const int code = pair != 0 ? pair : kOperatorCodes[static_cast<unsigned char>(c) & 0x7FU];
    if (code == 0) {
        return refuseControlCharacter();
    }
    at_ += pair != 0 ? 2 : 1;
    add(TokenKind::operatorToken, code, text_.substr(from, at_ - from), from);
    return true;
}

/// Makes room for the tokens that the rest of the text will have if it goes on like what has been read. Not
/// for more than eight times as many as there are: the rest may be one long literal.
void Lexer::makeRoom() {
    const std::size_t count = sequence_.tokens_.size();
    const std::size_t read = at_ - std::min(sequence_.command_->arguments, at_);
    const double perByte = static_cast<double>(count) / static_cast<double>(std::max<std::size_t>(read, 1));
    const auto expected = static_cast<std::size_t>(perByte * static_cast<double>(text_.size() - at_));
    const std::size_t more = expected + expected / 16;
    sequence_.tokens_.reserve(count + std::clamp(more, count / 2 + 8, count * 7 + 8));
}

void Lexer::add(TokenKind kind, int operatorCode, std::string_view text, std::size_t from) {
    if (sequence_.tokens_.size() == sequence_.tokens_.capacity()) {
        makeRoom();
    }
    sequence_.tokens_.emplace_back(kind, operatorCode, text, from, at_ - from);
}

bool Lexer::fail(std::size_t offset, std::string message) {
    sequence_.error_ = CommandError{std::move(message), offset};
    return false;
}

}  // namespace vexa
