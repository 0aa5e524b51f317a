#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "backend/text/character_set.h"
#include "backend/text/utf8.h"

namespace vexa {
namespace {

using std::string;

TEST(CharacterSetOfWindows, NamesACodePageByItsNumber) {
    const auto set = CharacterSet::find("cp850");
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(set->name(), "cp850");
    EXPECT_TRUE(set->isSingleByte());
}

TEST(CharacterSetOfWindows, RefusesWhatCannotCarryTheCommandLanguage) {
    for (const string name : {"", "no-such-set", "UTF-16", "UTF-7", "ISO-2022-JP", "ibm-37", "cp37",
                              "cp65000", "cp0", "cp1200", "cp123456", "UTF-8,version=1", "-", "windows-"}) {
        EXPECT_EQ(CharacterSet::find(name), nullptr) << name;
    }
    EXPECT_EQ(CharacterSet::find(string("UTF-8\0x", 7)), nullptr);
}

TEST(CharacterSetOfWindows, ReplacesWhatItLacks) {
    const auto western = CharacterSet::find("windows-1252");
    const auto japanese = CharacterSet::find("Shift_JIS");
    ASSERT_TRUE(western != nullptr && japanese != nullptr);
    EXPECT_EQ(western->fromUtf8("a\u6f22\U0001F600z"), "a??z") << "one mark a character";
    EXPECT_EQ(western->fromUtf8("\u0101"), "?") << "and no letter that only looks alike";
    EXPECT_EQ(japanese->toUtf8("a\x83\x20z"), "a\uFFFD z") << "a lead byte without its trail";
    EXPECT_EQ(japanese->toUtf8("a\x83"), "a\uFFFD");
    EXPECT_FALSE(japanese->toUtf16("a\x83\x20z").has_value());
}

// The code pages of one byte or two that Windows knows; no system has all of them.
const unsigned kCodePages[] = {
    437,   708,   720,   737,   775,   850,   852,   855,   857,   858,   860,   861,   862,   863,   864,
    865,   866,   869,   874,   932,   936,   949,   950,   1250,  1251,  1252,  1253,  1254,  1255,  1256,
    1257,  1258,  1361,  10000, 10001, 10002, 10003, 10004, 10005, 10006, 10007, 10008, 10010, 10017, 10021,
    10029, 10079, 10081, 10082, 20000, 20001, 20002, 20003, 20004, 20005, 20105, 20127, 20261, 20269, 20866,
    20932, 20936, 20949, 21866, 28591, 28592, 28593, 28594, 28595, 28596, 28597, 28598, 28599, 28603, 28605};

std::vector<std::unique_ptr<CharacterSet>> setsOfAllCodePages() {
    std::vector<std::unique_ptr<CharacterSet>> sets;
    for (const unsigned page : kCodePages) {
        if (auto set = CharacterSet::find(std::to_string(page))) sets.push_back(std::move(set));
    }
    return sets;
}

TEST(CharacterSetOfWindows, ReadsNoOtherByteAsAscii) {
    const auto sets = setsOfAllCodePages();
    EXPECT_GT(sets.size(), 50U);
    for (const auto& set : sets) {
        for (int first = 0x80; first < 0x100; ++first) {
            const string alone(1, static_cast<char>(first));
            ASSERT_GE(static_cast<unsigned char>(set->toUtf8(alone)[0]), 0x80) << set->name() << ' ' << first;
            for (int second = 0x21; second < 0x80 && !set->isSingleByte(); ++second) {
                const string pair = alone + static_cast<char>(second);
                const bool whole = set->characterLength(pair.data(), 2) == 2;
                const string utf8 = set->toUtf8(pair);
                ASSERT_EQ(utf8.back() == pair.back(), !whole) << set->name() << ' ' << first << ' ' << second;
            }
        }
    }
}

TEST(CharacterSetOfWindows, WritesNothingThatReadsAsAnotherCharacter) {
    for (const auto& set : setsOfAllCodePages()) {
        for (unsigned code = 0x80; code < 0xFFFF; code += code < 0x3000 || code >= 0xFF00 ? 1 : 53) {
            if (code >= 0xD800 && code < 0xE000) continue;
            string utf8;
            appendUtf8(utf8, char32_t{code});
            const string text = set->fromUtf8(utf8);
            if (text == "?") continue;
            ASSERT_EQ(set->toUtf8(text), utf8) << set->name() << ' ' << code;
        }
    }
}

TEST(CharacterSetOfWindows, KnowsCapitals) {
    EXPECT_EQ(toUpperCase("stra\u00dfe \u00e4\u03c9\u0436\u0131"), "STRA\u00dfE \u00c4\u03a9\u0416I");
    EXPECT_TRUE(equalsIgnoringCase("\u00c4\u03a3\u0416", "\u00e4\u03c2\u0436"));
    EXPECT_FALSE(equalsIgnoringCase("\u0130", "i"));
    EXPECT_FALSE(equalsIgnoringCase("\u0131", "i"));
    EXPECT_TRUE(equalsIgnoringCase("\U00010400", "\U00010428"));
    EXPECT_TRUE(equalsIgnoringCase("\u1e9e\u212a\u017f", "\u00dfks"))
        << "letters with two small or two capital forms";
}

}  // namespace
}  // namespace vexa
