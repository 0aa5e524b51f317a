// What every system must make of a character set, however it has it. The Windows build runs these tests as
// well.
#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "backend/text/character_set.h"

namespace vexa {
namespace {

using std::string;

TEST(CharacterSetEverywhere, KnowsTheNamesThatUsersType) {
    const struct {
        const char *typed, *name;
        bool singleByte;
    } cases[] = {
        {"UTF-8", "UTF-8", false},
        {"utf8", "UTF-8", false},
        {"utf_8", "UTF-8", false},
        {"windows-1252", "windows-1252", true},
        {"CP1252", "windows-1252", true},
        {"ISO-8859-1", "ISO-8859-1", true},
        {"latin1", "ISO-8859-1", true},
        {"iso-8859-15", "ISO-8859-15", true},
        {"US-ASCII", "US-ASCII", true},
        {"windows-1251", "windows-1251", true},
        {"Shift_JIS", "Shift_JIS", false},
        {"sjis", "Shift_JIS", false},
        {"cp932", "Shift_JIS", false},
        {"EUC-JP", "EUC-JP", false},
        {"GBK", "GBK", false},
        {"gb2312", "GB2312", false},
        {"Big5", "Big5", false},
        {"EUC-KR", "EUC-KR", false},
    };
    for (const auto& one : cases) {
        const auto set = CharacterSet::find(one.typed);
        ASSERT_NE(set, nullptr) << one.typed;
        EXPECT_EQ(set->name(), one.name) << one.typed;
        EXPECT_EQ(set->isSingleByte(), one.singleByte) << one.typed;
        EXPECT_EQ(set->isUtf8(), string(one.name) == "UTF-8") << one.typed;
    }
}

TEST(CharacterSetEverywhere, KnowsTheLengthsOfCharacters) {
    const struct {
        const char* set;
        string text;
        std::size_t length;
    } cases[] = {
        {"UTF-8", "a", 1},
        {"UTF-8", "\u00e4x", 2},
        {"UTF-8", "\u6f22x", 3},
        {"UTF-8", "\U0001F600x", 4},
        {"UTF-8", "\xE6\xBC", 1},
        {"UTF-8", "\xFFx", 1},
        {"windows-1252", "\xE4x", 1},
        {"windows-1252", "\x81x", 1},
        {"Shift_JIS", "\x83\x5Cx", 2},  // so, with a trail byte like a backslash
        {"Shift_JIS", "\x83", 1},
        {"Shift_JIS", "\xB1x", 1},  // a half-width letter
        {"Shift_JIS", "\x83\x20", 1},
        {"GBK", "\xBA\xBAx", 2},
        {"GBK", "\x81\x40x", 2},
        {"Big5", "\xA4\x5Cx", 2},
        {"EUC-KR", "\xB0\xA1x", 2},
        {"EUC-JP", "\xB4\xC1x", 2},
        {"EUC-JP", "\x8E\xB1x", 2},
        {"EUC-JP", "\x8F\xB0\xA1x", 3},
        {"EUC-JP", "\x8F\xB0", 1},
    };
    for (const auto& one : cases) {
        const auto set = CharacterSet::find(one.set);
        ASSERT_NE(set, nullptr) << one.set;
        EXPECT_EQ(set->characterLength(one.text.data(), one.text.size()), one.length)
            << one.set << ' ' << one.text;
        EXPECT_EQ(set->characterLength(one.text.data(), 0), 0U);
    }
}

TEST(CharacterSetEverywhere, EveryTwoBytesHaveACharacterWithinThem) {
    for (const char* name : {"Shift_JIS", "GBK", "Big5", "EUC-KR", "EUC-JP", "windows-1252", "UTF-8"}) {
        const auto set = CharacterSet::find(name);
        ASSERT_NE(set, nullptr) << name;
        for (int pair = 0; pair < 0x10000; ++pair) {
            const char bytes[] = {static_cast<char>(pair >> 8), static_cast<char>(pair & 0xFF)};
            const std::size_t length = set->characterLength(bytes, 2);
            ASSERT_GE(length, 1U) << name << ' ' << pair;
            ASSERT_LE(length, pair < 0x8000 ? 1U : 2U) << name << ' ' << pair;
        }
    }
}

TEST(CharacterSetEverywhere, ConvertsThereAndBack) {
    const struct {
        const char* set;
        string text, utf8;
    } cases[] = {
        {"UTF-8", "\u00e4\u6f22\U0001F600", "\u00e4\u6f22\U0001F600"},
        {"windows-1252", "M\xFCller \x80", "M\u00fcller \u20ac"},
        {"ISO-8859-1", "M\xFCller", "M\u00fcller"},
        {"windows-1251", "\xC4\xE0", "\u0414\u0430"},
        {"Shift_JIS", "a\x83\x5C\\~", "a\u30bd\\~"},
        {"EUC-JP", "\xB4\xC1", "\u6f22"},
        {"GBK", "\xBA\xBA", "\u6c49"},
        {"Big5", "\xBA\x7E", "\u6f22"},
        {"EUC-KR", "\xB0\xA1", "\uac00"},
        {"Shift_JIS", "", ""},
    };
    for (const auto& one : cases) {
        const auto set = CharacterSet::find(one.set);
        ASSERT_NE(set, nullptr) << one.set;
        EXPECT_EQ(set->toUtf8(one.text), one.utf8) << one.set;
        EXPECT_EQ(set->fromUtf8(one.utf8), one.text) << one.set;
        EXPECT_TRUE(set->toUtf16(one.text).has_value()) << one.set;
    }
}

struct CharacterCase {
    string bytes, utf8;
};

/// Characters of EUC-JP in all its forms.
const CharacterCase kEucJpCharacters[] = {
    {"\xA1\xA1", "\u3000"},     {"\xA4\xA2", "\u3042"},     {"\xB4\xC1", "\u6f22"},
    {"\xF4\xA6", "\u7199"},     {"\x8E\xA1", "\uff61"},     {"\x8E\xB1", "\uff71"},
    {"\x8E\xDF", "\uff9f"},     {"\x8F\xB0\xA1", "\u4e02"}, {"\x8F\xAB\xA3", "\u00e4"},
    {"\x8F\xA2\xAF", "\u02d8"}, {"\x8F\xED\xE3", "\u9fa5"}, {"\x8F\xB0\xBC", "\u4e7f"},
    {"\xA1\xC0", "\uff3c"},
};

TEST(CharacterSetEverywhere, ReadsEucJpByTheFormOfItsBytes) {
    const auto set = CharacterSet::find("EUC-JP");
    ASSERT_NE(set, nullptr);
    for (const auto& one : kEucJpCharacters) {
        const string followed = one.bytes + "'";
        EXPECT_EQ(set->characterLength(followed.data(), followed.size()), one.bytes.size()) << one.utf8;
        EXPECT_EQ(set->toUtf8(followed), one.utf8 + "'");
        EXPECT_EQ(set->fromUtf8(one.utf8), one.bytes) << one.utf8;
        EXPECT_EQ(set->fromUtf8("<" + one.utf8 + ">"), "<" + one.bytes + ">") << one.utf8;
    }
}

TEST(CharacterSetEverywhere, ReadsAndWritesTheFormsOfEucJpMixed) {
    const auto set = CharacterSet::find("EUC-JP");
    ASSERT_NE(set, nullptr);
    string bytes, utf8;
    for (const auto& left : kEucJpCharacters) {
        for (const auto& right : kEucJpCharacters) {
            bytes += left.bytes + right.bytes;
            utf8 += left.utf8 + right.utf8;
        }
    }
    EXPECT_EQ(set->toUtf8(bytes), utf8);
    EXPECT_EQ(set->fromUtf8(utf8), bytes);
    EXPECT_TRUE(set->toUtf16(bytes).has_value());
}

TEST(CharacterSetEverywhere, TakesNoAsciiByteIntoACharacterOfEucJp) {
    const auto set = CharacterSet::find("EUC-JP");
    ASSERT_NE(set, nullptr);
    for (int ascii = 0; ascii < 0x80; ++ascii) {
        const char byte = static_cast<char>(ascii);
        for (const string lead : {"\xB0", "\xB4", "\xAB", "\x8E", "\x8F", "\x8F\xB0"}) {
            const string text = lead + byte;
            EXPECT_EQ(set->characterLength(text.data(), text.size()), 1U) << ascii;
            EXPECT_FALSE(set->toUtf16(text).has_value()) << ascii;
            EXPECT_EQ(set->toUtf8(text).back(), byte);
        }
    }
}

TEST(CharacterSetEverywhere, KnowsWhatIsBrokenInEucJp) {
    const auto set = CharacterSet::find("EUC-JP");
    ASSERT_NE(set, nullptr);
    const CharacterCase cases[] = {
        {"x\xB4'", "x\uFFFD'"},
        {"x\xB4", "x\uFFFD"},
        {"x\x8E<", "x\uFFFD<"},
        {"x\x8F\xB0", "x\uFFFD"},
        {"x\x8F\xB0<", "x\uFFFD\uFFFD<"},
        {"x\xB4\xFF<", "x\uFFFD<"},
        {"x\x8F\"y", "x\uFFFD\"y"},
        {"\xA0z", "\uFFFDz"},
        {"\xFFz", "\uFFFDz"},
        {"\xB0!", "\uFFFD!"},  // has the bits of U+4E02, but is not its form
        {"\xB4\xC1\xB4'\xB4\xC1", "\u6f22\uFFFD'\u6f22"},
        {"\xA9\xA1z", "\uFFFDz"},  // one character, to which nothing is assigned
        {"\x8F\xA1\xA1z", "\uFFFDz"},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(set->toUtf8(one.bytes), one.utf8);
        EXPECT_FALSE(set->toUtf16(one.bytes).has_value()) << one.utf8;
    }
    const CharacterCase lengths[] = {{"\xA9\xA1", "2"},     {"\x8F\xA1\xA1", "3"}, {"\x8F\xB0\xFF", "1"},
                                     {"\x8F\xFF\xB0", "1"}, {"\xB4\xA0", "1"},     {"\x8E\xFE", "1"}};
    for (const auto& one : lengths) {
        EXPECT_EQ(std::to_string(set->characterLength(one.bytes.data(), one.bytes.size())), one.utf8);
    }
}

TEST(CharacterSetEverywhere, HasNoOtherBytesInAscii) {
    const auto set = CharacterSet::find("US-ASCII");
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(set->toUtf8("a\xBC\x62\xA2\x63\xA6\xE4"), "a\uFFFDb\uFFFDc\uFFFD\uFFFD");
    EXPECT_EQ(set->fromUtf8("a\u00bcb\uff1c\u6f22"), "a?b??");
    for (int byte = 0x80; byte < 0x100; ++byte) {
        const string text(1, static_cast<char>(byte));
        EXPECT_EQ(set->toUtf8(text), "\uFFFD") << byte;
        EXPECT_FALSE(set->toUtf16(text).has_value()) << byte;
    }
}

const char* const kSetsEverywhere[] = {
    "US-ASCII",     "ISO-8859-1",   "ISO-8859-2",   "ISO-8859-6",   "ISO-8859-7",   "ISO-8859-8",
    "ISO-8859-15",  "KOI8-R",       "KOI8-U",       "TIS-620",      "windows-1250", "windows-1251",
    "windows-1252", "windows-1253", "windows-1254", "windows-1255", "windows-1256", "windows-1257",
    "windows-1258", "cp437",        "cp850",        "cp866",        "cp874",        "Shift_JIS",
    "GBK",          "GB2312",       "Big5",         "EUC-KR",       "windows-949",  "EUC-JP"};

/// True when a text has a character that is written as one ASCII byte.
bool hasAscii(const string& text) {
    for (const char c : text) {
        if (static_cast<unsigned char>(c) < 0x80) return true;
    }
    return false;
}

TEST(CharacterSetEverywhere, MakesAsciiOfNothingButAscii) {
    for (const char* name : kSetsEverywhere) {
        const auto set = CharacterSet::find(name);
        ASSERT_NE(set, nullptr) << name;
        for (int first = 0x80; first < 0x100; ++first) {
            const string alone(1, static_cast<char>(first));
            EXPECT_FALSE(hasAscii(set->toUtf8(alone))) << name << ' ' << first;
            for (int second = 0; second < 0x100; ++second) {
                const string pair = alone + static_cast<char>(second);
                const bool whole = set->characterLength(pair.data(), pair.size()) == 2;
                ASSERT_EQ(hasAscii(set->toUtf8(pair)), !whole && second < 0x80)
                    << name << ' ' << first << ' ' << second;
            }
        }
    }
}

TEST(CharacterSetEverywhere, ConvertsLongTexts) {
    // Longer than what is converted at a time, which must end between two characters.
    const struct {
        const char* set;
        string utf8;
    } cases[] = {{"windows-1251", "\u0416\u0434"},
                 {"Shift_JIS", "\u30bd\uff71\u6f22"},
                 {"EUC-JP", "\u30bd\u4e02\uff71\u4e02"}};
    for (const auto& one : cases) {
        const auto set = CharacterSet::find(one.set);
        ASSERT_NE(set, nullptr) << one.set;
        for (const std::size_t before : {0U, 1U, 2U, 3U, 4U}) {
            string start;
            for (std::size_t i = 0; i < before; ++i) start += "\u0416";
            string utf8 = start;
            string text = set->fromUtf8(start);
            const string bytes = set->fromUtf8(one.utf8);
            for (int i = 0; i < 70000; ++i) {
                utf8 += one.utf8;
                text += bytes;
            }
            EXPECT_TRUE(set->fromUtf8(utf8) == text) << one.set << ' ' << before;
            EXPECT_TRUE(set->toUtf8(text) == utf8) << one.set << ' ' << before;
        }
    }
}

}  // namespace
}  // namespace vexa
