#include <array>

#include "frontend/import/markdown_reader.h"

namespace vexa::frontend {

namespace {

constexpr std::size_t kLongestAddress = 2048;

bool isPunctuation(char c) {
    return (c >= '!' && c <= '/') || (c >= ':' && c <= '@') || (c >= '[' && c <= '`') ||
           (c >= '{' && c <= '~');
}

bool isWordPart(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
           static_cast<unsigned char>(c) > 127;
}

/// The text of a link or picture that begins at `text`, "[text](address)"; its length, 0 for none.
std::size_t linkLength(std::string_view text, std::string_view& label) {
    const std::size_t begin = text.starts_with('!') ? 2 : 1;
    // Only so far as the next bracket, so that many brackets take no longer than their text.
    const std::string_view inside = text.substr(0, text.find('[', begin));
    const std::size_t end = inside.find("](", begin);
    if (end == std::string_view::npos) return 0;
    const std::size_t close = text.substr(0, end + kLongestAddress).find(')', end);
    if (close == std::string_view::npos) return 0;
    label = text.substr(begin, end - begin);
    return close + 1;
}

/// How many of the mark at the beginning of `text` stand in a row.
std::size_t runLength(std::string_view text) {
    const std::size_t end = text.find_first_not_of(text.front());
    return end == std::string_view::npos ? text.size() : end;
}

/// Whether a mark of emphasis is one, and no letter of its own: it touches a word on one side, and an
/// underscore does not on both.
bool isMark(std::string_view all, std::size_t at, std::size_t length) {
    const bool before = at > 0 && all[at - 1] != ' ';
    const bool behind = at + length < all.size() && all[at + length] != ' ';
    if (!before && !behind) return false;
    const bool inWord = before && behind && isWordPart(all[at - 1]) && isWordPart(all[at + length]);
    return all[at] != '_' || !inWord;
}

/// Adds the text of code between marks of the same length; where the mark stands alone, the mark itself.
std::size_t addCode(std::string_view rest, std::string& shown) {
    const std::size_t length = runLength(rest);
    const std::size_t end = rest.find(rest.substr(0, length), length);
    if (end == std::string_view::npos) {
        shown += rest.substr(0, length);
        return length;
    }
    shown += rest.substr(length, end - length);
    return end + length;
}

}  // namespace

std::string withoutMarks(std::string_view text) {
    std::string shown;
    std::string_view label;
    for (std::size_t at = 0; at < text.size();) {
        const std::string_view rest = text.substr(at);
        const char c = rest.front();
        if (c == '\\' && rest.size() > 1 && isPunctuation(rest[1])) {
            shown += rest[1];
            at += 2;
        } else if (c == '`') {
            at += addCode(rest, shown);
        } else if (c == '[' || rest.starts_with("![")) {
            const std::size_t length = linkLength(rest, label);
            shown += length == 0 ? rest.substr(0, 1) : label;
            at += length == 0 ? 1 : length;
        } else if (c == '*' || c == '_' || rest.starts_with("~~")) {
            const std::size_t length = runLength(rest);
            if (!isMark(text, at, length)) shown += rest.substr(0, length);
            at += length;
        } else {
            shown += c;
            ++at;
        }
    }
    return shown;
}

}  // namespace vexa::frontend
