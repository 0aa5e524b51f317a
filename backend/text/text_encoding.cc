#include "backend/text/text_encoding.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>

#include "backend/text/utf8.h"

namespace vexa {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
constexpr std::size_t kSample = 4096;  // bytes of the beginning that are looked at

using namespace std::string_view_literals;

struct Mark {
    std::string_view bytes;
    std::string_view shown;
    std::string_view name;
};

/// The longer ones first: that of UTF-32 begins with that of UTF-16.
constexpr Mark kMarks[] = {{"\xFF\xFE\0\0"sv, "FF FE 00 00", "UTF-32LE"},
                           {"\0\0\xFE\xFF"sv, "00 00 FE FF", "UTF-32BE"},
                           {"\xFF\xFE"sv, "FF FE", "UTF-16LE"},
                           {"\xFE\xFF"sv, "FE FF", "UTF-16BE"}};

/// What the places of zero bytes, counted by their offset's remainder of 4, say.
std::string_view nameOfZeros(const std::array<std::size_t, 4>& zeros, std::size_t size) {
    const std::size_t even = zeros[0] + zeros[2];
    const std::size_t odd = zeros[1] + zeros[3];
    const std::size_t quarter = size / 4;
    const auto isMost = [quarter](std::size_t count) { return count * 10 >= quarter * 9; };
    if (isMost(zeros[2]) && isMost(zeros[3]) && zeros[0] == 0) return "UTF-32LE";
    if (isMost(zeros[0]) && isMost(zeros[1]) && zeros[3] == 0) return "UTF-32BE";
    if ((even + odd) * 8 < size) return {};
    if (odd > even * 9) return "UTF-16LE";
    return even > odd * 9 ? "UTF-16BE" : std::string_view();
}

/// The sets that texts in a language mostly have beside UTF-8.
struct LanguageSets {
    std::string_view language;
    std::array<std::string_view, 2> sets;
};
constexpr LanguageSets kLanguageSets[] = {
    {"ja", {"Shift_JIS", "EUC-JP"}},
    {"ko", {"EUC-KR", ""}},
    {"zh-TW", {"Big5", ""}},
    {"zh", {"GB18030", ""}},
    {"ru", {"windows-1251", "KOI8-R"}},
    {"pl", {"windows-1250", "ISO-8859-2"}},
};
constexpr std::string_view kWestern = "windows-1252";
constexpr std::string_view kOtherSets[] = {"Shift_JIS", "GB18030", "Big5", "EUC-KR", "windows-1251"};

/// True when every character is one that a person types.
bool readsWell(std::string_view bytes, std::string_view name) {
    const std::unique_ptr<CharacterSet> set = CharacterSet::find(name);
    if (set == nullptr) return false;
    const std::string text = set->toUtf8(bytes);
    for (std::size_t at = asciiPrefix(text); at < text.size();) {
        const Utf8Character character = decodeUtf8(std::string_view(text).substr(at));
        const bool isControl = character.code >= 0x80 && character.code < 0xA0;
        const bool isPrivate = character.code >= 0xE000 && character.code < 0xF900;
        if (isControl || isPrivate || character.code == kReplacementCharacter) return false;
        at += character.length;
    }
    return true;
}

/// Letters beyond ASCII stand alone in Western words, and in rows elsewhere.
bool standInRows(std::string_view bytes) {
    std::size_t rows = 0;
    std::size_t count = 0;
    bool isIn = false;
    for (const char c : bytes) {
        const bool beyond = static_cast<unsigned char>(c) > 127;
        rows += beyond && !isIn ? 1 : 0;
        count += beyond ? 1 : 0;
        isIn = beyond;
    }
    return count * 2 > rows * 5;
}

std::size_t firstNoUtf8(std::string_view bytes) {
    for (std::size_t at = asciiPrefix(bytes); at < bytes.size(); at += asciiPrefix(bytes.substr(at))) {
        const Utf8Character character = decodeUtf8(bytes.substr(at));
        if (!character.valid) return at;
        at += character.length;
    }
    return std::string_view::npos;
}

std::size_t firstUnreadableCharacter(std::string_view line, const CharacterSet& set) {
    for (std::size_t at = asciiPrefix(line); at < line.size(); at += asciiPrefix(line.substr(at))) {
        const std::string_view rest = line.substr(at);
        const std::size_t length = std::max<std::size_t>(1, set.characterLength(rest.data(), rest.size()));
        if (set.toUtf8(rest.substr(0, length)).find(kReplacement) != std::string::npos) return at;
        at += length;
    }
    return std::string_view::npos;
}

/// The beginning of a text, whole lines if it is cut.
std::string_view beginningOf(std::string_view bytes) {
    constexpr std::size_t kEnoughForAGuess = 65'536;
    if (bytes.size() <= kEnoughForAGuess) return bytes;
    const std::string_view beginning = bytes.substr(0, kEnoughForAGuess);
    return beginning.substr(0, beginning.rfind('\n'));
}

}  // namespace

std::optional<WideEncoding> findWideEncoding(std::string_view bytes) {
    for (const Mark& mark : kMarks) {
        if (bytes.starts_with(mark.bytes)) return WideEncoding{mark.name, 0, mark.shown};
    }
    std::string_view sample = bytes.substr(0, kSample);
    sample.remove_suffix(sample.size() % 4);
    std::array<std::size_t, 4> zeros{};
    for (std::size_t at = 0; at < sample.size(); ++at) {
        if (sample[at] == '\0') ++zeros[at % 4];
    }
    const std::string_view name = sample.empty() ? std::string_view() : nameOfZeros(zeros, sample.size());
    if (name.empty()) return std::nullopt;
    return WideEncoding{name, bytes.find('\0')};
}

std::size_t firstUnreadable(std::string_view bytes, const CharacterSet& set) {
    if (set.isUtf8()) return firstNoUtf8(bytes);
    for (std::size_t at = 0; at < bytes.size();) {
        at += asciiPrefix(bytes.substr(at));
        // A line at once: most of them are good, and single characters are slow to look at.
        const std::string_view line = bytes.substr(at, bytes.find('\n', at) - at);
        if (set.toUtf8(line).find(kReplacement) != std::string::npos) {
            const std::size_t in = firstUnreadableCharacter(line, set);
            if (in != std::string_view::npos) return at + in;
        }
        at += line.size();
    }
    return std::string_view::npos;
}

bool isMostlyReadable(std::string_view bytes, const CharacterSet& set) {
    constexpr std::size_t kMostOfOne = 4;
    const std::string_view sample = beginningOf(bytes);
    std::size_t good = 0;
    std::size_t bad = 0;
    for (std::size_t at = asciiPrefix(sample); at < sample.size(); at += asciiPrefix(sample.substr(at))) {
        const std::string_view rest = sample.substr(at);
        const std::size_t length = std::max<std::size_t>(1, set.characterLength(rest.data(), rest.size()));
        const bool isBad = set.toUtf8(rest.substr(0, length)).find(kReplacement) != std::string::npos;
        ++(isBad ? bad : good);
        at += length;
    }
    return good >= bad * kMostOfOne;
}

bool isSurelyUtf8(std::string_view bytes, const CharacterSet& set) {
    // In sets of one byte such characters are two odd signs in a row; in others they may be one good one.
    const std::size_t enough = set.isSingleByte() ? 2 : 6;
    if (bytes.starts_with(kUtf8Mark)) return true;
    std::size_t count = 0;
    for (std::size_t at = 0; at < bytes.size();) {
        at += asciiPrefix(bytes.substr(at));
        if (at >= bytes.size()) break;
        const Utf8Character character = decodeUtf8(bytes.substr(at));
        if (!character.valid) return false;
        // One of two bytes comes about by chance in sets of two bytes; those of three and more do not.
        count += character.length > 2 ? character.length : 1;
        at += character.length;
    }
    return count >= enough;
}

std::string likelyCharacterSet(std::string_view bytes, std::string_view language) {
    const std::string_view sample = beginningOf(bytes);
    for (const LanguageSets& each : kLanguageSets) {
        if (!language.starts_with(each.language)) continue;
        for (const std::string_view name : each.sets) {
            if (!name.empty() && readsWell(sample, name)) return std::string(name);
        }
        break;
    }
    if (readsWell(sample, kWestern) && !standInRows(sample)) return std::string(kWestern);
    const auto* const other =
        std::find_if(std::begin(kOtherSets), std::end(kOtherSets),
                     [sample](std::string_view name) { return readsWell(sample, name); });
    return std::string(other == std::end(kOtherSets) ? kWestern : *other);
}

std::string hexadecimalByte(char byte) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>(byte);
    return {kDigits[value >> 4U], kDigits[value & 15U]};
}

}  // namespace vexa
