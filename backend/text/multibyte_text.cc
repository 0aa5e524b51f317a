// Text operations in the current character set. Everything that the parser calls for each word first takes
// what is ASCII in both texts, without a call; the set is asked from the first other byte on.
#include <algorithm>
#include <array>
#include <cstring>

#include "backend/text/character_set.h"
#include "backend/text/character_set_implementations.h"
#include "backend/text/utf16.h"
#include "backend/text/utf8.h"

namespace vexa {

namespace {

constexpr std::size_t kMostBytes = 4;

constexpr unsigned char unsignedOf(char c) { return static_cast<unsigned char>(c); }

constexpr std::array<unsigned char, 128> makeLowerCase() {
    std::array<unsigned char, 128> table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        const bool capital = i >= 'A' && i <= 'Z';
        table[i] = static_cast<unsigned char>(capital ? i + ('a' - 'A') : i);
    }
    return table;
}

constexpr std::array<unsigned char, 128> kLowerCase = makeLowerCase();

std::size_t lengthAt(const CharacterSet& set, std::string_view text) {
    if (unsignedOf(text[0]) < 0x80) return 1;
    return set.isUtf8() ? decodeUtf8(text).length : set.characterLength(text.data(), text.size());
}

/// What stands for `character` in comparisons.
char32_t foldedAt(const CharacterSet& set, std::string_view character) {
    const unsigned char first = unsignedOf(character[0]);
    return first < 0x80 ? kLowerCase[first] : set.foldedCharacter(character);
}

int compareByCharacter(std::string_view left, std::string_view right) {
    const CharacterSet& set = currentCharacterSet();
    while (!left.empty() && !right.empty()) {
        const std::string_view l = left.substr(0, lengthAt(set, left));
        const std::string_view r = right.substr(0, lengthAt(set, right));
        left.remove_prefix(l.size());
        right.remove_prefix(r.size());
        if (l == r) continue;
        const char32_t foldedLeft = foldedAt(set, l);
        const char32_t foldedRight = foldedAt(set, r);
        if (foldedLeft != foldedRight) return foldedLeft < foldedRight ? -1 : 1;
    }
    return static_cast<int>(!left.empty()) - static_cast<int>(!right.empty());
}

}  // namespace

int VEXAMBstricmp_A(const char* left, const char* right) {
    for (;; ++left, ++right) {
        const unsigned char l = unsignedOf(*left);
        const unsigned char r = unsignedOf(*right);
        if ((l | r) >= 0x80) return compareByCharacter(left, right);
        if (kLowerCase[l] != kLowerCase[r]) return kLowerCase[l] < kLowerCase[r] ? -1 : 1;
        if (l == 0) return 0;
    }
}

bool equalsIgnoringCase(std::string_view left, std::string_view right) {
    const std::size_t common = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < common; ++i) {
        const unsigned char l = unsignedOf(left[i]);
        const unsigned char r = unsignedOf(right[i]);
        if ((l | r) >= 0x80) return compareByCharacter(left.substr(i), right.substr(i)) == 0;
        if (kLowerCase[l] != kLowerCase[r]) return false;
    }
    return left.size() == right.size();
}

int VEXAMBstrcmp_A(const char* left, const char* right) { return std::strcmp(left, right); }

const char* VEXAMBstrchr_A(const char* text, int character) {
    for (;;) {
        const int length = VEXAMBmbclen_A(text);
        if (length <= 1 && unsignedOf(*text) == (character & 0xFF)) return text;
        if (length == 0) return nullptr;
        text += length;
    }
}

int VEXAMBmbclen_A(const char* text) {
    const unsigned char first = unsignedOf(text[0]);
    if (first < 0x80) return first == 0 ? 0 : 1;
    return static_cast<int>(lengthAt(currentCharacterSet(), {text, strnlen(text, kMostBytes)}));
}

const char16_t* VEXAMBTranscodeGeneric(const char* text) {
    static std::u16string buffer;
    auto converted = currentCharacterSet().toUtf16(text);
    if (!converted) return nullptr;
    buffer = std::move(*converted);
    return buffer.c_str();
}

std::string VEXAMBU16ToU8(const char16_t* text) { return utf16ToUtf8(text); }

std::string toUpperCase(std::string_view text) {
    const CharacterSet& set = currentCharacterSet();
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = lengthAt(set, text);
        const char first = text[0];
        if (unsignedOf(first) >= 0x80) {
            set.appendCapital(result, text.substr(0, length));
        } else {
            const bool small = first >= 'a' && first <= 'z';
            result.push_back(small ? static_cast<char>(first - ('a' - 'A')) : first);
        }
        text.remove_prefix(length);
    }
    return result;
}

}  // namespace vexa
