#include "backend/platform/text_width.h"

#include <algorithm>

#include "backend/platform/letters.h"
#include "backend/platform/utf8.h"

namespace vexa {

namespace {

constexpr char32_t kDelete = 0x7F;

bool isControl(char32_t code) { return code < 0x20 || (code >= kDelete && code < 0xA0); }

/// Line and paragraph separators, and the marks that turn the direction of what follows them.
bool steersDisplay(char32_t code) {
    return (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

bool isPlainAscii(char c) { return c >= ' ' && c <= '~'; }

/// Bytes at the beginning of `text` that are all printable ASCII characters.
std::size_t plainPrefix(std::string_view text) {
    return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isPlainAscii) - text.begin());
}

std::size_t widthOf(char32_t code) {
    if (code < 0x300 || steersDisplay(code)) return 1;
    return static_cast<std::size_t>(letterWidth(code));
}

char32_t visibleForm(char32_t code) {
    constexpr char32_t kPictures = 0x2400;
    if (code < 0x20) return kPictures + code;
    if (code == kDelete) return 0x2421;
    return isControl(code) || steersDisplay(code) ? kReplacementCharacter : code;
}

/// One line of the text broken into lines of at most `width` columns.
class LineBreaker {
  public:
    LineBreaker(std::size_t width, std::vector<std::string>& lines) : width_(width), lines_(lines) {}

    void add(std::string_view blanks, std::string_view word) {
        const std::size_t wordWidth = displayWidth(word);
        if (used_ + blanks.size() + wordWidth <= width_) {
            line_.append(blanks).append(word);
            used_ += blanks.size() + wordWidth;
        } else {
            if (used_ > 0) finish();
            addLongWord(word);
        }
    }

    void finish() {
        lines_.push_back(std::move(line_));
        line_.clear();
        used_ = 0;
    }

  private:
    void addLongWord(std::string_view word) {
        while (!word.empty()) {
            const Utf8Character character = decodeUtf8(word);
            const std::size_t wide = widthOf(character.code);
            if (used_ > 0 && used_ + wide > width_) finish();
            line_.append(word.substr(0, character.length));
            used_ += wide;
            word.remove_prefix(character.length);
        }
    }

    std::size_t width_;
    std::vector<std::string>& lines_;
    std::string line_;
    std::size_t used_ = 0;
};

void wrapLine(std::string_view line, std::size_t width, std::vector<std::string>& lines) {
    if (displayWidth(line) <= width) {
        lines.emplace_back(line);
        return;
    }
    LineBreaker breaker(width, lines);
    std::size_t at = 0;
    while (at < line.size()) {
        const std::size_t word = line.find_first_not_of(' ', at);
        if (word == std::string_view::npos) break;
        const std::size_t end = std::min(line.find(' ', word), line.size());
        breaker.add(line.substr(at, word - at), line.substr(word, end - word));
        at = end;
    }
    breaker.finish();
}

}  // namespace

std::size_t displayWidth(std::string_view text) {
    std::size_t width = 0;
    for (;;) {
        const std::size_t plain = plainPrefix(text);
        width += plain;
        text.remove_prefix(plain);
        if (text.empty()) return width;
        const Utf8Character character = decodeUtf8(text);
        width += widthOf(character.code);
        text.remove_prefix(character.length);
    }
}

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

std::string printableText(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (;;) {
        const std::size_t plain = plainPrefix(text);
        result.append(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty()) return result;
        const Utf8Character character = decodeUtf8(text);
        appendUtf8(result, visibleForm(character.code));
        text.remove_prefix(character.length);
    }
}

}  // namespace vexa
