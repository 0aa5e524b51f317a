#include "backend/text/character_set.h"

#include <gtest/gtest.h>

#include <random>

#include "backend/text/utf8.h"

namespace vexa {
namespace {

using std::string;

TEST(CharacterSetStandsAlone, KnowsWhichAsciiBytesMayBePartOfALongerCharacter) {
    const struct {
        const char *set, *alone, *trails;
    } cases[] = {
        {"UTF-8", "'<A\\|0", ""},     {"windows-1252", "'<A\\|0", ""}, {"Shift_JIS", "'<>&\"0", "A\\|@"},
        {"Big5", "'<>&\"0", "A\\|@"}, {"EUC-KR", "'<>&\"A\\", ""},     {"GB18030", "", "0A\\|@"},
    };
    for (const auto& one : cases) {
        const auto set = CharacterSet::find(one.set);
        ASSERT_NE(set, nullptr) << one.set;
        for (const char each : string(one.alone)) EXPECT_TRUE(set->standsAlone(each)) << one.set << each;
        for (const char each : string(one.trails)) EXPECT_FALSE(set->standsAlone(each)) << one.set << each;
    }
}

TEST(CharacterSetFind, RefusesWhatItDoesNotKnowOrCannotUse) {
    for (const string name : {"", "no-such-set", "UTF-16", "UTF-16LE", "UTF-32", "UTF-7", "ISO-2022-JP", "HZ",
                              "ibm-37", "ebcdic-cp-us", "UTF-8,version=1", "SCSU", "CESU-8"}) {
        EXPECT_EQ(CharacterSet::find(name), nullptr) << name;
    }
    EXPECT_EQ(CharacterSet::find(string("UTF-8\0x", 7)), nullptr);
    EXPECT_EQ(CharacterSet::find(string(5000, 'x')), nullptr);
}

TEST(Gb18030, HasCharactersOfOneTwoAndFourBytes) {
    const auto set = CharacterSet::find("GB18030");
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(set->name(), "GB18030");
    EXPECT_FALSE(set->isSingleByte());
    const struct {
        string text;
        std::size_t length;
    } cases[] = {
        {"\xBA\xBAx", 2},     {"\x81\x30\x81\x30x", 4}, {"\x81\x30\x81", 1},
        {"\x81\x30x\x30", 1}, {"\x94\x39\xDA\x33x", 4},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(set->characterLength(one.text.data(), one.text.size()), one.length) << one.text;
    }
    for (int pair = 0; pair < 0x10000; ++pair) {
        const char bytes[] = {static_cast<char>(pair >> 8), static_cast<char>(pair & 0xFF)};
        const std::size_t length = set->characterLength(bytes, 2);
        ASSERT_GE(length, 1U) << pair;
        ASSERT_LE(length, pair < 0x8000 ? 1U : 2U) << pair;
    }
    for (const string text : {"\x94\x39\xFC\x36", "plain ASCII"}) {
        const string utf8 = text[0] == 'p' ? text : "\U0001F600";
        EXPECT_EQ(set->toUtf8(text), utf8);
        EXPECT_EQ(set->fromUtf8(utf8), text);
        EXPECT_TRUE(set->toUtf16(text).has_value()) << text;
    }
}

struct ConversionCase {
    const char* set;
    string text, utf8;
};

TEST(Conversion, ReplacesWhatCannotBeRead) {
    const ConversionCase cases[] = {
        {"UTF-8", "a\xFFz", "a\uFFFDz"},   {"US-ASCII", "a\xFFz", "a\uFFFDz"},
        {"Shift_JIS", "a\x83", "a\uFFFD"}, {"Shift_JIS", "\xA0z", "\uFFFDz"},
        {"GB18030", "a\xFFz", "a\uFFFDz"}, {"EUC-KR", "a\xFFz", "a\uFFFDz"},
    };
    for (const auto& one : cases) {
        const auto set = CharacterSet::find(one.set);
        ASSERT_NE(set, nullptr) << one.set;
        EXPECT_EQ(set->toUtf8(one.text), one.utf8) << one.set;
        EXPECT_FALSE(set->toUtf16(one.text).has_value()) << one.set;
    }
}

TEST(Conversion, WritesAQuestionMarkForWhatTheSetLacks) {
    for (const char* name : {"windows-1252", "ISO-8859-1", "Shift_JIS", "US-ASCII", "EUC-KR"}) {
        const auto set = CharacterSet::find(name);
        ASSERT_NE(set, nullptr) << name;
        EXPECT_EQ(set->fromUtf8("a\U0001F600z"), "a?z") << name;
    }
}

TEST(Conversion, OfLongTextsLosesNothing) {
    const auto set = CharacterSet::find("GB18030");
    ASSERT_NE(set, nullptr);
    string utf8;
    for (int i = 0; i < 50000; ++i) utf8 += "a\u6c49\U0001F600";
    EXPECT_EQ(set->toUtf8(set->fromUtf8(utf8)), utf8);
}

const char* const kManySets[] = {"UTF-8", "windows-1252", "Shift_JIS", "EUC-JP",
                                 "GBK",   "GB18030",      "Big5",      "EUC-KR"};

TEST(Walking, GivesThePiecesThatTheConversionReads) {
    for (const char* name : kManySets) {
        const auto set = CharacterSet::find(name);
        ASSERT_NE(set, nullptr) << name;
        for (char32_t code = 0x20; code < 0x20000; code += code < 0x3000 ? 1 : 5) {
            string utf8;
            appendUtf8(utf8, code);
            const string text = set->fromUtf8(utf8);
            if (set->toUtf8(text) != utf8) continue;  // the set lacks the character
            const string followed = text + "0a";
            ASSERT_EQ(set->characterLength(followed.data(), followed.size()), text.size())
                << name << ' ' << static_cast<unsigned>(code);
        }
    }
}

TEST(Walking, EndsOnAnyBytesAndTheirConversionIsValid) {
    std::minstd_rand random(7);
    for (const char* name : kManySets) {
        const auto set = CharacterSet::find(name);
        ASSERT_NE(set, nullptr) << name;
        for (int round = 0; round < 500; ++round) {
            string text;
            while (text.size() < 64) text.push_back(static_cast<char>(random() >> 8U));
            std::size_t at = 0;
            while (at < text.size()) {
                const std::size_t length = set->characterLength(text.data() + at, text.size() - at);
                ASSERT_TRUE(length >= 1 && length <= text.size() - at) << name;
                at += length;
            }
            const string utf8 = set->toUtf8(text);
            ASSERT_EQ(validUtf8(utf8), utf8) << name;
            const auto units = set->toUtf16(text);
            ASSERT_TRUE(!units || utf8.find("\uFFFD") == string::npos) << name;
        }
    }
}

TEST(CurrentCharacterSet, IsUtf8UntilAnotherIsInstalled) {
    EXPECT_EQ(currentCharacterSet().name(), "UTF-8");
    installCharacterSet(CharacterSet::find("windows-1252"));
    EXPECT_EQ(currentCharacterSet().name(), "windows-1252");
    EXPECT_EQ(toUtf8("\xE4"), "\u00e4");
    EXPECT_EQ(fromUtf8("\u00e4"), "\xE4");
    installCharacterSet(nullptr);
    EXPECT_EQ(currentCharacterSet().name(), "UTF-8");
    EXPECT_EQ(toUtf8("\xE4"), "\uFFFD");
}

}  // namespace
}  // namespace vexa
