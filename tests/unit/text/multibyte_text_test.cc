#include <gtest/gtest.h>

#include <string>

#include "backend/text/character_set.h"
#include "tests/unit/text/installed_character_set.h"

namespace vexa {
namespace {

using std::string;

int sign(int value) { return (value > 0) - (value < 0); }

struct CompareCase {
    const char* set;
    string left, right;
    int order;
};

TEST(CompareIgnoringCase, GoesByCharacters) {
    const CompareCase cases[] = {
        {"UTF-8", "", "", 0},
        {"UTF-8", "Output", "OUTPUT", 0},
        {"UTF-8", "out", "output", -1},
        {"UTF-8", "output", "out", 1},
        {"UTF-8", "A", "b", -1},
        {"UTF-8", "[", "a", -1},
        {"UTF-8", "@", "`", -1},
        {"UTF-8", "\u00c4pfel", "\u00e4PFEL", 0},
        {"UTF-8", "\u0414\u0410", "\u0434\u0430", 0},
        {"UTF-8", "\u00c4", "\u00d6", -1},
        {"UTF-8", "a\u00e4", "a", 1},
        {"UTF-8", "k", "\u212a", 0},  // the sign of the kelvin
        {"UTF-8", "\xFF", "\xFF", 0},
        {"UTF-8", "\xFE", "\xFF", -1},
        {"windows-1252", "\xC4pfel", "\xE4PFEL", 0},
        {"windows-1252", "\xD7", "\xF7", -1},       // signs, not letters
        {"Shift_JIS", "\x83\x41", "\x83\x61", -1},  // trail bytes A and a: different characters
        {"Shift_JIS", "\x82\x60", "\x82\x81", 0},   // full-width A and a
        {"Shift_JIS", "x\x83\x5CY", "X\x83\x5Cy", 0},
        {"GB18030", "\xBA\xBA\x41", "\xBA\xBA\x61", 0},
        {"GB18030", "\x81\x41", "\x81\x61", -1},
        {"GB18030", "\xA3\xC1", "\xA3\xE1", 0},  // full-width A and a
    };
    for (const auto& one : cases) {
        const InstalledCharacterSet installed(one.set);
        const char* left = one.left.c_str();
        const char* right = one.right.c_str();
        EXPECT_EQ(sign(VEXAMBstricmp_A(left, right)) == 0, one.order == 0)
            << one.set << ' ' << left << ' ' << right;
        EXPECT_EQ(sign(VEXAMBstricmp_A(left, right)), -sign(VEXAMBstricmp_A(right, left)))
            << left << ' ' << right;
        EXPECT_EQ(equalsIgnoringCase(one.left, one.right), one.order == 0) << left << ' ' << right;
        if (one.set == string("UTF-8")) {
            EXPECT_EQ(sign(VEXAMBstricmp_A(left, right)), one.order) << left << ' ' << right;
        }
    }
}

TEST(Compare, GoesByBytes) {
    EXPECT_EQ(VEXAMBstrcmp_A("a", "a"), 0);
    EXPECT_GT(VEXAMBstrcmp_A("a", "A"), 0);
    EXPECT_GT(VEXAMBstrcmp_A("\u00e4", "z"), 0);
}

TEST(FindCharacter, NeverFindsATrailByte) {
    const struct {
        const char* set;
        string text;
        int character;
        int place;  // -1 for none
    } cases[] = {
        {"UTF-8", "a/b", '/', 1},
        {"UTF-8", "\u00e4/b", '/', 2},
        {"UTF-8", "ab", '/', -1},
        {"UTF-8", "ab", 0, 2},
        {"UTF-8", "\u00e4", 0xA4, -1},
        {"windows-1252", "a\xE4", 0xE4, 1},
        {"Shift_JIS", "\x83\x5C", '\\', -1},
        {"Shift_JIS", "\x83\x5C\\", '\\', 2},
        {"GB18030",
         "\x81\x30\x81\x30"
         "0",
         '0', 4},
    };
    for (const auto& one : cases) {
        const InstalledCharacterSet installed(one.set);
        const char* text = one.text.c_str();
        const char* expected = one.place < 0 ? nullptr : text + one.place;
        EXPECT_EQ(VEXAMBstrchr_A(text, one.character), expected) << one.set << ' ' << text;
    }
}

TEST(CharacterLengthOfText, EndsAtTheFinalZero) {
    const struct {
        const char* set;
        const char* text;
        int length;
    } cases[] = {
        {"UTF-8", "", 0},
        {"UTF-8", "a", 1},
        {"UTF-8", "\u00e4", 2},
        {"UTF-8", "\xE6\xBC", 1},
        {"Shift_JIS", "\x83", 1},
        {"Shift_JIS", "\x83\x5C", 2},
        {"windows-1252", "\xE4", 1},
        {"GB18030", "\x81\x30\x81", 1},
        {"GB18030", "\x81\x30\x81\x30", 4},
    };
    for (const auto& one : cases) {
        const InstalledCharacterSet installed(one.set);
        EXPECT_EQ(VEXAMBmbclen_A(one.text), one.length) << one.set << ' ' << one.text;
    }
}

TEST(Transcode, GoesOverSixteenBitTextToUtf8) {
    const struct {
        const char* set;
        const char* text;
        const char* utf8;  // null where the text cannot be converted
    } cases[] = {
        {"UTF-8", "", ""},
        {"UTF-8", "a\u00e4\u6f22\U0001F600", "a\u00e4\u6f22\U0001F600"},
        {"UTF-8", "a\xFF", nullptr},
        {"windows-1252", "\xE4\x80", "\u00e4\u20ac"},
        {"Shift_JIS", "\x83\x5C", "\u30bd"},
        {"Shift_JIS", "\x83", nullptr},
        {"GB18030", "\x94\x39\xFC\x36", "\U0001F600"},
        {"GB18030", "\x81\x30", nullptr},
    };
    for (const auto& one : cases) {
        const InstalledCharacterSet installed(one.set);
        const char16_t* wide = VEXAMBTranscodeGeneric(one.text);
        ASSERT_EQ(wide == nullptr, one.utf8 == nullptr) << one.set << ' ' << one.text;
        if (wide == nullptr) continue;
        EXPECT_EQ(VEXAMBU16ToU8(wide), one.utf8) << one.set;
    }
}

TEST(Transcode, ReplacesASurrogateWithoutItsPartner) {
    const char16_t high[] = {u'a', 0xD83D, u'z', 0};
    const char16_t low[] = {0xDE00, 0};
    const char16_t last[] = {0xD83D, 0};
    EXPECT_EQ(VEXAMBU16ToU8(high), "a\uFFFDz");
    EXPECT_EQ(VEXAMBU16ToU8(low), "\uFFFD");
    EXPECT_EQ(VEXAMBU16ToU8(last), "\uFFFD");
}

TEST(ToUpperCase, ChangesLettersAndNoTrailBytes) {
    const struct {
        const char* set;
        string text, capitals;
    } cases[] = {
        {"UTF-8", "", ""},
        {"UTF-8", "az{`1_.", "AZ{`1_."},
        {"UTF-8", "\u00e4\u00df\u0434", "\u00c4\u00df\u0414"},
        {"UTF-8", "a\xFF", "A\xFF"},
        {"windows-1252", "\xE4\xDF", "\xC4\xDF"},
        {"windows-1252", "\xFF", "\x9F"},
        {"ISO-8859-1", "\xFF", "\xFF"},  // the set lacks the capital
        {"Shift_JIS", "a\x83\x61", "A\x83\x61"},
        {"Shift_JIS", "\x82\x81", "\x82\x60"},
        {"GB18030", "\x81\x61\xA3\xE1", "\x81\x61\xA3\xC1"},
        {"GB18030", "\x81\x30\x81\x61",
         "\x81"
         "0\x81\x61"},
    };
    for (const auto& one : cases) {
        const InstalledCharacterSet installed(one.set);
        EXPECT_EQ(toUpperCase(one.text), one.capitals) << one.set << ' ' << one.text;
    }
}

}  // namespace
}  // namespace vexa
