#include <windows.h>

#include <algorithm>
#include <array>
#include <bitset>
#include <utility>

#include "backend/platform/character_set_implementations.h"

namespace vexa {

namespace {

constexpr UINT kGb18030 = 54936;
constexpr char16_t kUnreadable = 0xFFFD;

unsigned char byteOf(char c) { return static_cast<unsigned char>(c); }
bool isHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool isLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

/// What the system's conversion gives for the whole text; nothing when it finds a part that it cannot read.
std::optional<std::u16string> convert(UINT codePage, std::string_view text) {
    std::u16string units(text.size(), u'\0');
    if (text.empty()) return units;
    const int length =
        MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, text.data(), static_cast<int>(text.size()),
                            reinterpret_cast<wchar_t*>(units.data()), static_cast<int>(units.size()));
    if (length <= 0) return std::nullopt;
    units.resize(static_cast<std::size_t>(length));
    return units;
}

/// A code page whose characters have one byte or two, of which the first says how many.
class WindowsConverter : public CodePageConverter {
  public:
    explicit WindowsConverter(UINT codePage) : codePage_(codePage) { findTrails(); }

    [[nodiscard]] Reading classify(std::string_view bytes) const override;
    [[nodiscard]] std::u16string toUtf16(std::string_view text) const override;
    [[nodiscard]] std::optional<std::u16string> toUtf16Strictly(std::string_view text) const override;
    [[nodiscard]] std::string fromUtf16(std::u16string_view text) const override;

  protected:
    /// For a code page that says by itself what its characters are.
    WindowsConverter(UINT codePage, std::nullptr_t /*noTrails*/) : codePage_(codePage) {}
    [[nodiscard]] UINT codePage() const { return codePage_; }

  private:
    void findTrails();
    [[nodiscard]] std::size_t lengthAt(std::string_view text) const;

    UINT codePage_;
    std::bitset<256> trails_;  // the bytes that are the second one of any character
};

bool isCharacter(UINT codePage, std::string_view bytes) {
    const auto units = convert(codePage, bytes);
    // A pair that the system reads as two characters is none.
    return units && (units->size() == 1 || (units->size() == 2 && isHighSurrogate((*units)[0])));
}

void WindowsConverter::findTrails() {
    for (int lead = 0x80; lead < 0x100; ++lead) {
        if (IsDBCSLeadByteEx(codePage_, static_cast<BYTE>(lead)) == 0) continue;
        for (int trail = 0; trail < 0x100; ++trail) {
            const std::array<char, 2> pair = {static_cast<char>(lead), static_cast<char>(trail)};
            const auto place = static_cast<std::size_t>(trail);
            if (!trails_[place]) trails_[place] = isCharacter(codePage_, {pair.data(), pair.size()});
        }
    }
}

CodePageConverter::Reading WindowsConverter::classify(std::string_view bytes) const {
    const bool leads = IsDBCSLeadByteEx(codePage_, byteOf(bytes[0])) != 0;
    if (bytes.size() == 1) return leads ? Reading::needsMore : Reading::character;
    const bool pair = bytes.size() == 2 && leads && trails_[byteOf(bytes[1])];
    return pair ? Reading::character : Reading::broken;
}

/// Bytes of the character, or of the broken byte, that a text begins with.
std::size_t WindowsConverter::lengthAt(std::string_view text) const {
    constexpr std::size_t kLongest = 4;
    for (std::size_t length = 1; length <= std::min(kLongest, text.size()); ++length) {
        switch (classify(text.substr(0, length))) {
            case Reading::character:
                return length;
            case Reading::broken:
                return 1;
            case Reading::needsMore:
                break;
        }
    }
    return 1;
}

std::u16string WindowsConverter::toUtf16(std::string_view text) const {
    if (auto whole = toUtf16Strictly(text)) return *whole;
    std::u16string result;
    while (!text.empty()) {
        const std::size_t length = lengthAt(text);
        result += toUtf16Strictly(text.substr(0, length)).value_or(std::u16string(1, kUnreadable));
        text.remove_prefix(length);
    }
    return result;
}

std::optional<std::u16string> WindowsConverter::toUtf16Strictly(std::string_view text) const {
    return convert(codePage_, text);
}

/// One question mark, not two, for a character that needs two units.
std::u16string withoutPairs(std::u16string_view text) {
    std::u16string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool pair = isHighSurrogate(text[i]) && i + 1 < text.size() && isLowSurrogate(text[i + 1]);
        result.push_back(pair ? u'?' : text[i]);
        if (pair) ++i;
    }
    return result;
}

std::string WindowsConverter::fromUtf16(std::u16string_view text) const {
    const std::u16string units = withoutPairs(text);
    std::string result(units.size() * 2, '\0');
    const int length = WideCharToMultiByte(
        codePage_, WC_NO_BEST_FIT_CHARS, reinterpret_cast<const wchar_t*>(units.data()),
        static_cast<int>(units.size()), result.data(), static_cast<int>(result.size()), "?", nullptr);
    result.resize(static_cast<std::size_t>(std::max(length, 0)));
    return result;
}

/// GB18030 has characters of four bytes, too, and the system's functions do not tell them apart by their
/// leads.
class Gb18030Converter final : public WindowsConverter {
  public:
    Gb18030Converter() : WindowsConverter(kGb18030, nullptr) {}

    [[nodiscard]] Reading classify(std::string_view bytes) const override;
    [[nodiscard]] std::string fromUtf16(std::u16string_view text) const override;
};

CodePageConverter::Reading Gb18030Converter::classify(std::string_view bytes) const {
    const auto leads = [](char c) { return byteOf(c) >= 0x81 && byteOf(c) <= 0xFE; };
    const auto digit = [](char c) { return c >= '0' && c <= '9'; };
    const auto trails = [](char c) { return byteOf(c) >= 0x40 && c != 0x7F && byteOf(c) <= 0xFE; };
    if (bytes.size() == 1) return leads(bytes[0]) ? Reading::needsMore : Reading::character;
    if (!leads(bytes[0])) return Reading::broken;
    if (bytes.size() == 2 && trails(bytes[1])) return Reading::character;
    if (!digit(bytes[1])) return Reading::broken;
    if (bytes.size() == 2) return Reading::needsMore;
    if (!leads(bytes[2])) return Reading::broken;
    if (bytes.size() == 3) return Reading::needsMore;
    return bytes.size() == 4 && digit(bytes[3]) ? Reading::character : Reading::broken;
}

std::string Gb18030Converter::fromUtf16(std::u16string_view text) const {
    // It has every character, and so takes no substitute for those that are missing.
    std::string result(text.size() * 4, '\0');
    const int length = WideCharToMultiByte(codePage(), 0, reinterpret_cast<const wchar_t*>(text.data()),
                                           static_cast<int>(text.size()), result.data(),
                                           static_cast<int>(result.size()), nullptr, nullptr);
    result.resize(static_cast<std::size_t>(std::max(length, 0)));
    return result;
}

struct NamedPage {
    std::string_view name;  // small letters and digits only
    UINT codePage;
    std::string_view canonicalName;
};

// The names that other systems know the sets by. What is no name of these may be a number, as in cp850.
constexpr std::array<NamedPage, 55> kNamedPages = {{
    {"usascii", 20127, "US-ASCII"},
    {"ascii", 20127, "US-ASCII"},
    {"iso88591", 28591, "ISO-8859-1"},
    {"latin1", 28591, "ISO-8859-1"},
    {"iso88592", 28592, "ISO-8859-2"},
    {"latin2", 28592, "ISO-8859-2"},
    {"iso88593", 28593, "ISO-8859-3"},
    {"latin3", 28593, "ISO-8859-3"},
    {"iso88594", 28594, "ISO-8859-4"},
    {"latin4", 28594, "ISO-8859-4"},
    {"iso88595", 28595, "ISO-8859-5"},
    {"cyrillic", 28595, "ISO-8859-5"},
    {"iso88596", 28596, "ISO-8859-6"},
    {"arabic", 28596, "ISO-8859-6"},
    {"iso88597", 28597, "ISO-8859-7"},
    {"greek", 28597, "ISO-8859-7"},
    {"iso88598", 28598, "ISO-8859-8"},
    {"hebrew", 28598, "ISO-8859-8"},
    {"iso88599", 28599, "ISO-8859-9"},
    {"latin5", 28599, "ISO-8859-9"},
    {"iso885913", 28603, "ISO-8859-13"},
    {"iso885915", 28605, "ISO-8859-15"},
    {"latin9", 28605, "ISO-8859-15"},
    {"koi8r", 20866, "KOI8-R"},
    {"koi8u", 21866, "KOI8-U"},
    {"windows874", 874, "windows-874"},
    {"tis620", 874, "TIS-620"},
    {"windows1250", 1250, "windows-1250"},
    {"windows1251", 1251, "windows-1251"},
    {"windows1252", 1252, "windows-1252"},
    {"windows1253", 1253, "windows-1253"},
    {"windows1254", 1254, "windows-1254"},
    {"windows1255", 1255, "windows-1255"},
    {"windows1256", 1256, "windows-1256"},
    {"windows1257", 1257, "windows-1257"},
    {"windows1258", 1258, "windows-1258"},
    {"shiftjis", 932, "Shift_JIS"},
    {"sjis", 932, "Shift_JIS"},
    {"mskanji", 932, "Shift_JIS"},
    {"windows31j", 932, "windows-31j"},
    {"ms932", 932, "windows-31j"},
    {"gbk", 936, "GBK"},
    {"gb2312", 936, "GB2312"},
    {"euccn", 936, "GB2312"},
    {"windows936", 936, "GBK"},
    {"big5", 950, "Big5"},
    {"windows950", 950, "Big5"},
    {"euckr", 20949, "EUC-KR"},
    {"ksc5601", 20949, "EUC-KR"},
    {"uhc", 949, "windows-949"},
    {"windows949", 949, "windows-949"},
    {"eucjp", 20932, "EUC-JP"},
    {"gb18030", kGb18030, "GB18030"},
    {"utf8", CP_UTF8, "UTF-8"},
    {"macintosh", 10000, "macintosh"},
}};

/// The small letters and digits of a name; empty when it has anything else but hyphens and underscores.
std::string essenceOf(std::string_view name) {
    std::string essence;
    for (const char c : name) {
        if (c == '-' || c == '_') continue;
        const bool capital = c >= 'A' && c <= 'Z';
        const char small = capital ? static_cast<char>(c + ('a' - 'A')) : c;
        const bool belongs = (small >= 'a' && small <= 'z') || (small >= '0' && small <= '9');
        if (!belongs) return {};
        essence.push_back(small);
    }
    return essence;
}

/// The number behind one of the words that code pages are called by; 0 when the name has another form.
UINT numberOf(std::string_view essence) {
    for (const std::string_view word : {"cp", "ibm", "windows", "ms"}) {
        if (essence.starts_with(word)) {
            essence.remove_prefix(word.size());
            break;
        }
    }
    constexpr std::size_t kMostDigits = 5;
    UINT number = 0;
    if (essence.empty() || essence.size() > kMostDigits) return 0;
    for (const char c : essence) {
        if (c < '0' || c > '9') return 0;
        number = number * 10 + static_cast<UINT>(c - '0');
    }
    return number;
}

NamedPage pageOf(const std::string& essence) {
    const auto* const named =
        std::find_if(kNamedPages.begin(), kNamedPages.end(),
                     [&essence](const NamedPage& page) { return page.name == essence; });
    if (named != kNamedPages.end()) return *named;
    const UINT number = numberOf(essence);
    const auto* const numbered =
        std::find_if(kNamedPages.begin(), kNamedPages.end(),
                     [number](const NamedPage& page) { return page.codePage == number; });
    return numbered != kNamedPages.end() ? *numbered : NamedPage{essence, number, essence};
}

}  // namespace

std::unique_ptr<CodePageConverter> CodePageConverter::open(const std::string& name,
                                                           std::string& canonicalName) {
    const std::string essence = essenceOf(name);
    const NamedPage page = pageOf(essence);
    CPINFO info{};
    if (page.codePage == 0 || IsValidCodePage(page.codePage) == 0 || GetCPInfo(page.codePage, &info) == 0) {
        return nullptr;
    }
    canonicalName = page.canonicalName;
    if (page.codePage == CP_UTF8) return nullptr;
    if (page.codePage == kGb18030) return std::make_unique<Gb18030Converter>();
    // Sets with shift states and the like have longer characters; a file cannot be read in them.
    if (info.MaxCharSize > 2) return nullptr;
    return std::make_unique<WindowsConverter>(page.codePage);
}

}  // namespace vexa
