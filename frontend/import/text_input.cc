#include "frontend/import/text_input.h"

#include <utility>

#include "backend/text/character_set.h"
#include "backend/text/text_encoding.h"
#include "backend/text/utf8.h"

namespace vexa::frontend {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kLittleEndianMark = "\xFF\xFE";
constexpr std::string_view kBigEndianMark = "\xFE\xFF";

constexpr std::string_view kMarkOfUtf32("\xFF\xFE\0\0", 4);

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
    const std::size_t skipped = bytes.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0;
    bytes.erase(0, skipped);
    text = std::move(bytes);
    const std::size_t bad = firstNoUtf8(text);
    if (bad == std::string_view::npos) return true;
    problem.place = placeOf(text, bad);
    problem.message = composed(
        "The byte ^1 (at offset ^2 of the file) is no character in ^3. Name the encoding that the file has, which is probably ^4: --encoding ^4"_text,
        {hexadecimalByte(text[bad]), std::to_string(bad + skipped), "UTF-8", likelyCharacterSet(text, "")});
    return false;
}

/// False, with the reason, for bytes that cannot be meant to be in a set of single and double bytes.
bool isIn(const CharacterSet& set, std::string_view bytes, ImportProblem& problem) {
    if (isSurelyUtf8(bytes, set)) {
        problem.place = placeOf(bytes, asciiPrefix(bytes));
        problem.message =
            composed("The file is UTF-8 and would be read as ^1. Leave --encoding out."_text, {set.name()});
        return false;
    }
    const std::size_t bad = firstUnreadable(bytes, set);
    if (bad == std::string_view::npos) return true;
    problem.place = placeOf(set.toUtf8(bytes.substr(0, bad)), std::string_view::npos);
    problem.message = composed(
        "The byte ^1 (at offset ^2 of the file) is no character in ^3. Name the encoding that the file has, which is probably ^4: --encoding ^4"_text,
        {hexadecimalByte(bytes[bad]), std::to_string(bad), set.name(), likelyCharacterSet(bytes, "")});
    return false;
}

/// Whether it is UTF-32, or UTF-16 without the byte order mark that would have told.
bool isUnreadWide(std::string_view bytes, ImportProblem& problem) {
    const std::optional<WideEncoding> wide = findWideEncoding(bytes);
    if (!wide) return false;
    const std::string name(wide->name);
    problem.place = {1, 1};
    problem.message =
        name.starts_with("UTF-16")
            ? composed(
                  "The file is ^1 text (a zero byte at offset ^2). Name its encoding: --encoding ^1"_text,
                  {name, std::to_string(wide->offset)})
            : composed("The file is ^1 text, which no --encoding reads. Save it as UTF-8."_text, {name});
    return true;
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

bool checkEncoding(const std::string& encoding, ImportProblem& problem) {
    const std::string name = plainName(encoding);
    const bool isWide = name == "utf16" || name == "utf16le" || name == "utf16be";
    if (name.empty() || name == "utf8" || isWide || CharacterSet::find(encoding) != nullptr) return true;
    problem.message = composed(
        "The encoding ^1 is not known. Use a name such as UTF-8, UTF-16, windows-1252 or Shift_JIS."_text,
        {encoding});
    return false;
}

bool readText(std::string bytes, const std::string& encoding, std::string& text, ImportProblem& problem) {
    const std::string name = plainName(encoding);
    const bool isOpen = name.empty() || name == "utf16";
    if (name.empty() && bytes.starts_with(kMarkOfUtf32)) return !isUnreadWide(bytes, problem);
    if (name == "utf16le" || (isOpen && bytes.starts_with(kLittleEndianMark))) {
        return readUtf16Text(bytes, false, text, problem);
    }
    if (name == "utf16be" || name == "utf16" || (isOpen && bytes.starts_with(kBigEndianMark))) {
        return readUtf16Text(bytes, true, text, problem);
    }
    if (name.empty() && isUnreadWide(bytes, problem)) return false;
    if (name.empty() || name == "utf8") return readUtf8Text(std::move(bytes), text, problem);
    if (!checkEncoding(encoding, problem)) return false;
    const std::unique_ptr<CharacterSet> set = CharacterSet::find(encoding);
    if (!isIn(*set, bytes, problem)) return false;
    text = set->toUtf8(bytes);
    return true;
}

}  // namespace vexa::frontend
