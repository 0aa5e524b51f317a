#include "module/frame/xml_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <optional>

#include "tests/unit/text/installed_character_set.h"

namespace vexa {
namespace {

using namespace std::string_literals;

constexpr std::string_view kSpecials = "\"&'<>";

/// A byte from 0x81 on begins a character of two bytes, whatever the second is; FF cannot be converted.
class PairSet final : public CharacterSet {
  public:
    PairSet() : CharacterSet("pairs", false, false) {}

    [[nodiscard]] std::size_t characterLength(const char* text, std::size_t available) const override {
        const bool pair = available > 1 && static_cast<unsigned char>(*text) >= 0x81;
        return pair ? 2 : available > 0 ? 1 : 0;
    }
    [[nodiscard]] std::string toUtf8(std::string_view text) const override { return std::string(text); }
    [[nodiscard]] std::string fromUtf8(std::string_view text) const override { return std::string(text); }
    /// Every pair becomes U+3042.
    [[nodiscard]] std::optional<std::u16string> toUtf16(std::string_view text) const override {
        std::u16string converted;
        while (!text.empty()) {
            const std::size_t length = characterLength(text.data(), text.size());
            if (text.front() == '\xFF') {
                return std::nullopt;
            }
            converted += length == 2 ? u'\u3042' : static_cast<char16_t>(text.front());
            text.remove_prefix(length);
        }
        return converted;
    }
    [[nodiscard]] char32_t foldedCharacter(std::string_view character) const override {
        return static_cast<unsigned char>(character.front());
    }
    void appendCapital(std::string& text, std::string_view character) const override { text += character; }
};

class InstalledPairSet {
  public:
    InstalledPairSet() { installCharacterSet(std::make_unique<PairSet>()); }
    ~InstalledPairSet() { installCharacterSet(nullptr); }
    InstalledPairSet(const InstalledPairSet&) = delete;
    InstalledPairSet& operator=(const InstalledPairSet&) = delete;
};

/// The escape as one says it: character by character, of a set of single bytes.
std::string escapedByteByByte(std::string_view text) {
    std::string escaped;
    for (const char each : text) {
        const std::string_view entities[] = {"&quot;", "&amp;", "&apos;", "&lt;", "&gt;"};
        const std::size_t special = kSpecials.find(each);
        if (special == std::string_view::npos) {
            escaped += each;
        } else {
            escaped += entities[special];
        }
    }
    return escaped;
}

/// Bytes that look like noise and are the same in every run.
std::string noise(std::size_t length, std::string_view alphabet, std::uint32_t seed) {
    std::string text;
    for (std::size_t i = 0; i < length; ++i) {
        seed = seed * 1664525U + 1013904223U;
        text += alphabet[(seed >> 16U) % alphabet.size()];
    }
    return text;
}

TEST(EscapeXml, ReplacesTheFiveCharacters) {
    EXPECT_EQ(escapeXml(""), "");
    EXPECT_EQ(escapeXml("\""), "&quot;");
    EXPECT_EQ(escapeXml("&"), "&amp;");
    EXPECT_EQ(escapeXml("'"), "&apos;");
    EXPECT_EQ(escapeXml("<"), "&lt;");
    EXPECT_EQ(escapeXml(">"), "&gt;");
    EXPECT_EQ(escapeXml("&amp;"), "&amp;amp;");
}

TEST(EscapeXml, LeavesEveryOtherByteOfASetOfSingleBytesAlone) {
    const InstalledCharacterSet set("windows-1252");
    for (int byte = 0; byte < 256; ++byte) {
        const std::string text(1, static_cast<char>(byte));
        EXPECT_EQ(escapeXml(text), escapedByteByByte(text)) << byte;
    }
}

TEST(EscapeXml, FindsEachCharacterAtEachPlaceOfATextOfSomeBlocks) {
    for (const char special : kSpecials) {
        for (std::size_t place = 0; place < 200; ++place) {
            std::string text(200, 'x');
            text[place] = special;
            ASSERT_EQ(escapeXml(text), escapedByteByByte(text)) << special << " at " << place;
        }
    }
}

TEST(EscapeXml, FindsRunsThatCrossTheEndOfABlockAtEveryOffset) {
    for (std::size_t place = 40; place < 140; ++place) {
        for (std::size_t length = 1; length <= 12; ++length) {
            std::string text(256, 'x');
            text.replace(place, length, noise(length, kSpecials, static_cast<std::uint32_t>(place)));
            ASSERT_EQ(escapeXml(text), escapedByteByByte(text)) << length << " at " << place;
        }
    }
}

TEST(EscapeXml, IsTheSameForEveryLengthAsByteByByte) {
    // The neighbours of the five in their bits come first.
    constexpr std::string_view kAlphabets[] = {"!#$%(;=?xyz", "\"&'<>", "x&", "abcdefghijklmnopqrstuvwxyz<"};
    for (std::size_t length = 0; length <= 200; ++length) {
        for (const std::string_view alphabet : kAlphabets) {
            const std::string text = noise(length, alphabet, static_cast<std::uint32_t>(length) + 7);
            ASSERT_EQ(escapeXml(text), escapedByteByByte(text)) << length;
        }
    }
}

TEST(EscapeXml, PiecesOfEveryLengthBetweenSpecialCharacters) {
    for (const std::size_t round : {64U, 1024U, 2048U, 3072U, 4096U}) {
        for (std::size_t length = round - 10; length <= round + 10; ++length) {
            const std::string piece(length, 'x');
            const std::string text = '<' + piece + '&' + piece + "\"'" + piece;
            ASSERT_EQ(escapeXml(text), escapedByteByByte(text)) << length;
        }
    }
}

TEST(EscapeXml, LongTextsWithFewOrManyOrOnlySpecialCharacters) {
    constexpr std::string_view kAlphabets[] = {"\"&'<>", "x<", "xxxxxxxxxxxxxxxxxxxxxxxxxxxxx'",
                                               "\x01\x7F\x82\xA2\xA6\xA7\xBC\xBE\xFF&"};
    for (const std::string_view alphabet : kAlphabets) {
        for (std::uint32_t seed = 1; seed <= 12; ++seed) {
            const std::string text = noise(20000 + seed * 7, alphabet, seed);
            ASSERT_EQ(escapeXml(text), escapedByteByByte(text)) << alphabet << seed;
        }
    }
}

TEST(EscapeXml, PassesZeroBytesBrokenTextAndLongCharacters) {
    EXPECT_EQ(escapeXml("a\0<\0b"s), "a\0&lt;\0b"s);
    EXPECT_EQ(escapeXml("\xC3<\xE3\x81>\xFF&\x80"), "\xC3&lt;\xE3\x81&gt;\xFF&amp;\x80");
    EXPECT_EQ(escapeXml("gr\u00fc\u00df<\u3042>"), "gr\u00fc\u00df&lt;\u3042&gt;");
    EXPECT_EQ(escapeXml("\x01\t\n\x1F\x7F"), "\x01\t\n\x1F\x7F");
}

TEST(EscapeXml, NeverReplacesTheSecondByteOfACharacter) {
    const InstalledPairSet set;
    for (const char special : kSpecials) {
        const std::string wide = std::string("\x81") + special;
        EXPECT_EQ(escapeXml(wide), wide);
        EXPECT_EQ(escapeXml(wide + special), wide + escapedByteByByte({&special, 1}));
        EXPECT_EQ(escapeXml(special + wide), escapedByteByByte({&special, 1}) + wide);
        for (std::size_t place = 50; place < 70; ++place) {
            const std::string before(place, 'x');
            ASSERT_EQ(escapeXml(before + wide + '<'), before + wide + "&lt;") << place;
        }
    }
}

TEST(EscapeXml, GoesOnBehindZeroBytesAndACutCharacterOfTwoBytes) {
    const InstalledPairSet set;
    EXPECT_EQ(escapeXml("a\0<\0\0>"s), "a\0&lt;\0\0&gt;"s);
    EXPECT_EQ(escapeXml("<\x81"), "&lt;\x81");
    EXPECT_EQ(escapeXml("\x81\0<"s), "\x81\0&lt;"s);
    EXPECT_EQ(escapeXml(""), "");
}

TEST(EscapeXml, LooksOnlyAtTheTextThatItIsGiven) {
    const std::string text = "a<b>";
    EXPECT_EQ(escapeXml(std::string_view(text).substr(0, 2)), "a&lt;");
    const InstalledPairSet set;
    const std::string wide = "\x81'";
    EXPECT_EQ(escapeXml(std::string_view(wide).substr(0, 1)), "\x81");
}

TEST(EscapeXml, RealDoubleByteSetsKeepTheirCharacters) {
    for (const char* const name : {"Shift_JIS", "GB18030", "Big5", "EUC-KR"}) {
        const InstalledCharacterSet installed(name);
        const CharacterSet& set = currentCharacterSet();
        for (int first = 0x81; first < 0xFF; ++first) {
            const std::string cut(1, static_cast<char>(first));
            EXPECT_EQ(escapeXml("<" + cut), "&lt;" + cut);
            for (const char special : kSpecials) {
                const std::string pair = cut + special;
                const bool whole = set.characterLength(pair.data(), 2) == 2;
                EXPECT_EQ(escapeXml(pair), whole ? pair : cut + escapedByteByByte({&special, 1})) << name;
            }
        }
    }
}

TEST(ToXmlUtf8, ConvertsFromTheSetOfTheBackEnd) {
    EXPECT_EQ(toXmlUtf8(""), "");
    EXPECT_EQ(toXmlUtf8("gr\u00fc\u00df\u3042\U0001F600"), "gr\u00fc\u00df\u3042\U0001F600");
    EXPECT_EQ(toXmlUtf8("a<b"), "a<b") << "escapes nothing";
    {
        const InstalledCharacterSet set("windows-1252");
        EXPECT_EQ(toXmlUtf8("gr\xFC\xDF \x80"), "gr\u00fc\u00df \u20ac");
    }
    const InstalledCharacterSet set("Shift_JIS");
    EXPECT_EQ(toXmlUtf8("\x82\xA0"), "\u3042");
}

TEST(ToXmlUtf8, GivesNothingForWhatCannotBeConverted) {
    {
        const InstalledPairSet set;
        EXPECT_EQ(toXmlUtf8("a\x81'b"),
                  "a\u3042"
                  "b");
        EXPECT_EQ(toXmlUtf8("a\xFF'b"), "");
    }
    for (const char* const broken :
         {"\xC3", "a\xC3(", "\xFF", "\xED\xA0\x80", "\xC0\xAF", "\xF4\x90\x80\x80"}) {
        EXPECT_EQ(toXmlUtf8(broken), "") << testing::PrintToString(broken);
    }
    EXPECT_EQ(toXmlUtf8("good again"), "good again");
}

TEST(ToXmlUtf8, EndsAtAZeroByte) { EXPECT_EQ(toXmlUtf8("ab\0cd"s), "ab"); }

TEST(Attributes, AreABlankTheNameAndTheQuotedValue) {
    std::string xml = "<e";
    appendAsIs(xml, "a", "\xFF<\"");
    appendText(xml, "b", "x<\"\u00e9");
    appendText(xml, "c", "\xFF");
    appendFlag(xml, "d", true);
    appendFlag(xml, "e", false);
    EXPECT_EQ(xml, "<e a=\"\xFF<\"\" b=\"x<\"\u00e9\" c=\"\" d=\"true\" e=\"false\"");
}

TEST(Attributes, IntegersAreDecimal) {
    const std::pair<std::int32_t, std::string_view> cases[] = {
        {0, " n=\"0\""},
        {7, " n=\"7\""},
        {-1, " n=\"-1\""},
        {1234567, " n=\"1234567\""},
        {std::numeric_limits<std::int32_t>::max(), " n=\"2147483647\""},
        {std::numeric_limits<std::int32_t>::min(), " n=\"-2147483648\""}};
    for (const auto& [number, expected] : cases) {
        std::string xml;
        appendInteger(xml, "n", number);
        EXPECT_EQ(xml, expected);
    }
}

TEST(Attributes, NumbersHaveSixDigitsAndTheShorterNotation) {
    const std::pair<double, std::string_view> cases[] = {{144.0, "144"},
                                                         {28.3464567 * 5, "141.732"},
                                                         {12.0, "12"},
                                                         {0.5, "0.5"},
                                                         {0.0, "0"},
                                                         {-0.0, "-0"},
                                                         {-1.0, "-1"},
                                                         {-2.25, "-2.25"},
                                                         {999999.0, "999999"},
                                                         {999999.5, "1e+06"},
                                                         {1000000.0, "1e+06"},
                                                         {1234567.0, "1.23457e+06"},
                                                         {-1234567.0, "-1.23457e+06"},
                                                         {0.0001, "0.0001"},
                                                         {0.00001, "1e-05"},
                                                         {0.000123456789, "0.000123457"},
                                                         {1.0 / 3, "0.333333"},
                                                         {2.0000001, "2"},
                                                         {1e100, "1e+100"},
                                                         {1.7976931348623157e308, "1.79769e+308"},
                                                         {-2.2250738585072014e-308, "-2.22507e-308"}};
    for (const auto& [number, expected] : cases) {
        std::string xml;
        appendNumber(xml, "n", number);
        EXPECT_EQ(xml, " n=\"" + std::string(expected) + '"');
    }
}

}  // namespace
}  // namespace vexa
