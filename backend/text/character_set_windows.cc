#include <windows.h>

#include <algorithm>
#include <array>

#include "backend/text/character_set_implementations.h"
#include "backend/text/code_page_windows.h"

namespace vexa {

namespace {

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
    {"eucjp", kEucJpCodePage, "EUC-JP"},
    {"gb18030", kGb18030CodePage, "GB18030"},
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
    if (page.codePage == 0) return nullptr;
    auto converter = makeWindowsConverter(page.codePage);
    if (converter != nullptr || page.codePage == CP_UTF8) canonicalName = page.canonicalName;
    return converter;
}

}  // namespace vexa
