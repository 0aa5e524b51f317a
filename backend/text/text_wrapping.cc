#include <string_view>

#include "backend/text/line_breaks.h"
#include "backend/text/text_width.h"
#include "backend/text/utf8.h"

namespace vexa {

namespace {

constexpr char32_t kQuotationMark = '"';
constexpr char32_t kApostrophe = '\'';

bool isDigit(char32_t code) { return code >= '0' && code <= '9'; }
bool isSeparator(char32_t code) { return code == '/' || code == '\\'; }

/// A place where a line may end.
struct Place {
    std::size_t end = 0;      ///< of the line, in bytes; blanks that follow are dropped
    std::size_t next = 0;     ///< where the next line begins
    std::size_t columns = 0;  ///< of all text before `next`
};

/// Cuts one line of a text into lines of a width, in one pass: it remembers the last places where a line may
/// end, and goes back to the best of them when a character is too much.
class LineCutter {
  public:
    LineCutter(std::string_view text, std::size_t width, std::vector<std::string>& lines)
        : text_(text), width_(width), lines_(lines) {}

    void cut();

  private:
    void takeBlank();
    void takeCharacter();
    void markPlaces(char32_t code, const BreakTraits& traits);
    [[nodiscard]] bool isBesideApostrophe(char32_t code, const BreakTraits& traits) const;
    [[nodiscard]] bool isBehindSeparator(char32_t code, const BreakTraits& traits) const;
    [[nodiscard]] bool isGapBinding(const BreakTraits& traits) const;
    [[nodiscard]] bool isPunctuationUpToBlank() const;
    void makeRoom(std::size_t columns);
    void endLine();

    [[nodiscard]] Place here() const { return {contentEnd_, at_, columns_}; }
    [[nodiscard]] bool isEmpty() const { return contentEnd_ <= begin_; }
    [[nodiscard]] bool isBehindBlank() const { return contentEnd_ < at_; }

    std::string_view text_;
    std::size_t width_;
    std::vector<std::string>& lines_;

    std::size_t begin_ = 0;         ///< of the line, in bytes
    std::size_t beginColumns_ = 0;  ///< columns of all text before the line
    std::size_t at_ = 0;
    std::size_t columns_ = 0;     ///< of all text before `at_`
    std::size_t contentEnd_ = 0;  ///< of the last character that is no blank

    char32_t code_ = 0;       ///< of that character
    BreakTraits traits_;      ///< of that character
    bool opensOnly_ = false;  ///< so far its word is opening punctuation
    bool isQuoted_ = false;   ///< behind a straight quotation mark that opens

    Place break_;   ///< the last proper place
    Place gap_;     ///< the last one that tears punctuation off its word, or a path apart, but no word
    Place inside_;  ///< the last one within a word that tears off neither punctuation nor a part of a marker
};

void LineCutter::cut() {
    while (at_ < text_.size()) {
        if (text_[at_] == ' ') {
            takeBlank();
        } else {
            takeCharacter();
        }
    }
    lines_.emplace_back(text_.substr(begin_, isEmpty() ? 0 : contentEnd_ - begin_));
}

void LineCutter::takeBlank() {
    ++at_;
    ++columns_;
}

void LineCutter::takeCharacter() {
    const Utf8Character character = decodeUtf8(text_.substr(at_));
    const std::size_t columns = characterWidth(character.code);
    BreakTraits traits = breakTraitsOf(character.code, columns);
    if (character.code == kQuotationMark) {
        traits = {false, isQuoted_, !isQuoted_};
        isQuoted_ = !isQuoted_;
    }
    const bool isMark = columns == 0 && !traits.bindsLeft;
    if (!isMark) {
        markPlaces(character.code, traits);
        makeRoom(columns);
        opensOnly_ = traits.bindsRight && (opensOnly_ || isBehindBlank() || isEmpty());
        code_ = character.code;
        traits_ = traits;
    }
    at_ += character.length;
    columns_ += columns;
    contentEnd_ = at_;
}

void LineCutter::markPlaces(char32_t code, const BreakTraits& traits) {
    if (isEmpty()) return;
    if (isBehindBlank()) {
        (isGapBinding(traits) ? gap_ : break_) = here();
    } else if (mayBreakBetween(traits_, traits)) {
        break_ = here();
    } else if (isBesideApostrophe(code, traits) || isBehindSeparator(code, traits)) {
        gap_ = here();
    } else if (!traits_.bindsRight && !traits.bindsLeft && !(code_ == '^' && isDigit(code))) {
        inside_ = here();
    }
}

/// Whether an apostrophe meets an ideograph or the like: nobody knows whether it opens or closes.
bool LineCutter::isBesideApostrophe(char32_t code, const BreakTraits& traits) const {
    return (traits_.loose && code == kApostrophe) || (traits.loose && code_ == kApostrophe);
}

bool LineCutter::isBehindSeparator(char32_t code, const BreakTraits& traits) const {
    return isSeparator(code_) && !isSeparator(code) && !traits.bindsLeft;
}

/// Whether the blanks before a character stand within a line, because there is nothing but opening
/// punctuation before them or closing punctuation behind them.
bool LineCutter::isGapBinding(const BreakTraits& traits) const {
    return opensOnly_ || (traits.bindsLeft && (traits.loose || isPunctuationUpToBlank()));
}

bool LineCutter::isPunctuationUpToBlank() const {
    for (std::string_view rest = text_.substr(at_); !rest.empty() && rest.front() != ' ';) {
        const Utf8Character character = decodeUtf8(rest);
        if (!breakTraitsOf(character.code, characterWidth(character.code)).bindsLeft) return false;
        rest.remove_prefix(character.length);
    }
    return true;
}

/// Ends lines until the character at hand fits, or stands alone.
void LineCutter::makeRoom(std::size_t columns) {
    while (columns_ - beginColumns_ + columns > width_) {
        if (isEmpty()) {  // blanks at most
            begin_ = at_;
            beginColumns_ = columns_;
            return;
        }
        endLine();
    }
}

void LineCutter::endLine() {
    Place place = here();
    for (const Place& better : {inside_, gap_, break_}) {
        if (better.next > begin_ + 1) place = better;  // a sign alone is not worth a line
    }
    lines_.emplace_back(text_.substr(begin_, place.end - begin_));
    begin_ = place.next;
    beginColumns_ = place.columns;
}

void wrapLine(std::string_view line, std::size_t width, std::vector<std::string>& lines) {
    if (displayWidth(line) <= width) {
        lines.emplace_back(line);
    } else {
        LineCutter(line, width, lines).cut();
    }
}

}  // namespace

std::vector<std::string> wrapText(std::string_view text, std::size_t width) {
    std::vector<std::string> lines;
    if (width == 0) width = 1;
    for (;;) {
        const std::size_t end = text.find_first_of("\r\n");
        wrapLine(text.substr(0, end), width, lines);
        if (end == std::string_view::npos) return lines;
        const bool pair = text.substr(end, 2) == "\r\n";
        text.remove_prefix(end + (pair ? 2 : 1));
    }
}

}  // namespace vexa
