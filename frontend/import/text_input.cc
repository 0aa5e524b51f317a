#include "frontend/import/text_input.h"

#include <utility>

#include "backend/text/character_set.h"
#include "backend/text/utf8.h"

namespace vexa::frontend {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kLittleEndianMark = "\xFF\xFE";
constexpr std::string_view kBigEndianMark = "\xFE\xFF";

/// A name of an encoding in small letters, without hyphens and underscores.
std::string plainName(std::string_view name) {
    std::string plain;
    for (const char c : name) {
        if (c == '-' || c == '_' || c == ' ') continue;
        plain += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return plain;
}

/// UTF-16 as UTF-8; false for half a character, whose offset `at` gets.
bool readUtf16(std::string_view bytes, bool bigEndian, std::string& text, std::size_t& at) {
    const auto unit = [&](std::size_t i) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        return static_cast<char32_t>(bigEndian ? first << 8U | second : second << 8U | first);
    };
    const auto isIn = [](char32_t code, char32_t first) { return code >= first && code < first + 0x400; };
    for (at = 0; at < bytes.size(); at += 2) {
        if (at + 1 == bytes.size()) return false;
        char32_t code = unit(at);
        if (isIn(code, 0xDC00)) return false;
        if (isIn(code, 0xD800)) {
            if (at + 3 >= bytes.size() || !isIn(unit(at + 2), 0xDC00)) return false;
            code = 0x10000 + ((code - 0xD800) << 10U) + (unit(at + 2) - 0xDC00);
            at += 2;
        }
        appendUtf8(text, code);
    }
    return true;
}

bool readUtf16Text(std::string_view bytes, bool bigEndian, std::string& text, ImportProblem& problem) {
    const std::string_view mark = bigEndian ? kBigEndianMark : kLittleEndianMark;
    if (bytes.starts_with(mark)) bytes.remove_prefix(mark.size());
    std::size_t at = 0;
    text.clear();
    if (readUtf16(bytes, bigEndian, text, at)) return true;
    problem.place = placeOf(text, text.size());
    problem.message = translated("The text is not UTF-16 here."_text);
    return false;
}

bool readUtf8Text(std::string bytes, std::string& text, ImportProblem& problem) {
    if (bytes.starts_with(kUtf8Mark)) bytes.erase(0, kUtf8Mark.size());
    text = std::move(bytes);
    const std::size_t bad = firstNoUtf8(text);
    if (bad == std::string_view::npos) return true;
    problem.place = placeOf(text, bad);
    problem.message =
        translated("The text is not UTF-8 here. Name its encoding, such as --encoding windows-1252."_text);
    return false;
}

}  // namespace

std::size_t firstNoUtf8(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size()) {
        at += asciiPrefix(text.substr(at));
        if (at >= text.size()) break;
        const Utf8Character character = decodeUtf8(text.substr(at));
        if (!character.valid) return at;
        at += character.length;
    }
    return std::string_view::npos;
}

std::string withPlainLineEnds(std::string text) {
    std::size_t to = 0;
    for (std::size_t from = 0; from < text.size(); ++from) {
        char c = text[from];
        if (c == '\r') {
            if (from + 1 < text.size() && text[from + 1] == '\n') continue;
            c = '\n';
        }
        text[to++] = c;
    }
    text.resize(to);
    return text;
}

std::string_view withoutBlanks(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n\f\v";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool readText(std::string bytes, const std::string& encoding, std::string& text, ImportProblem& problem) {
    const std::string name = plainName(encoding);
    const bool isOpen = name.empty() || name == "utf16";
    if (name == "utf16le" || (isOpen && bytes.starts_with(kLittleEndianMark))) {
        return readUtf16Text(bytes, false, text, problem);
    }
    if (name == "utf16be" || name == "utf16" || (isOpen && bytes.starts_with(kBigEndianMark))) {
        return readUtf16Text(bytes, true, text, problem);
    }
    if (name.empty() || name == "utf8") return readUtf8Text(std::move(bytes), text, problem);
    const std::unique_ptr<CharacterSet> set = CharacterSet::find(encoding);
    if (set == nullptr) {
        problem.message = composed(
            "The encoding ^1 is not known. Use a name such as UTF-8, UTF-16, windows-1252 or Shift_JIS."_text,
            {encoding});
        return false;
    }
    text = set->toUtf8(bytes);
    return true;
}

}  // namespace vexa::frontend
