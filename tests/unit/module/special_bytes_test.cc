#include "module/frame/special_bytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>

#include "backend/text/character_set.h"
#include "module/frame/xml_text.h"
#include "tests/unit/text/installed_character_set.h"

namespace vexa {
namespace {

using std::string;

string entityOf(const string& character) {
    return character == "\""  ? "&quot;"
           : character == "&" ? "&amp;"
           : character == "'" ? "&apos;"
           : character == "<" ? "&lt;"
           : character == ">" ? "&gt;"
                              : character;
}

/// Character by character, as the escape is defined.
string escapedOneByOne(const string& text) {
    string escaped;
    for (std::size_t at = 0; at < text.size();) {
        const auto length = static_cast<std::size_t>(std::max(VEXAMBmbclen_A(text.c_str() + at), 1));
        escaped += entityOf(text.substr(at, length));
        at += length;
    }
    return escaped;
}

TEST(EscapeXmlInBlocks, FindsASpecialCharacterAtEveryPlaceOfTextsOfEveryLength) {
    for (std::size_t size = 0; size <= 200; ++size) {
        EXPECT_EQ(escapeXml(string(size, 'x')), string(size, 'x'));
        for (std::size_t at = 0; at < size; ++at) {
            string text(size, '=');
            text[at] = "\"&'<>"[at % 5];
            EXPECT_EQ(escapeXml(text), escapedOneByOne(text)) << size << ' ' << at;
        }
    }
}

TEST(EscapeXmlInBlocks, TakesTextsOfManyBlocksWithSpecialCharactersFarApartAndNextToEachOther) {
    for (const std::size_t size : {2047U, 2048U, 2049U, 4096U, 70'000U}) {
        for (const std::size_t distance : {1U, 2U, 63U, 64U, 65U, 1023U, 1024U, 1025U, 5000U}) {
            string text(size, '.');
            for (std::size_t at = distance - 1; at < size; at += distance) {
                text[at] = '<';
            }
            EXPECT_EQ(escapeXml(text), escapedOneByOne(text)) << size << ' ' << distance;
        }
    }
}

TEST(EscapeXmlInBlocks, ReplacesNoByteOfALongerCharacterInAnySet) {
    constexpr std::string_view kBytes("\"&'<>01\x81\x82\x83\x8F\xA1\xC3\xA4\xE3\xFE\0aA|", 20);
    for (const char* const set :
         {"UTF-8", "windows-1252", "Shift_JIS", "Big5", "GBK", "GB18030", "EUC-JP", "EUC-KR"}) {
        const InstalledCharacterSet installed(set);
        std::mt19937 random(1);
        for (int round = 0; round < 2000; ++round) {
            string text;
            for (std::size_t size = random() % 150; text.size() < size;) {
                text += kBytes[random() % kBytes.size()];
            }
            ASSERT_EQ(escapeXml(text), escapedOneByOne(text)) << set << ' ' << testing::PrintToString(text);
        }
    }
}

TEST(SpecialBytes, EveryWayOfLookingMarksTheSameBytes) {
    string text;
    for (int byte = 0; byte < 256; ++byte) {
        text += static_cast<char>(byte);
    }
    std::array<std::uint64_t, 4> expected{};
    for (const char each : string("\"&'<>")) {
        const auto byte = static_cast<unsigned char>(each);
        expected[byte / 64U] |= std::uint64_t{1} << byte % 64U;
    }
    for (const MarkSpecialBytes mark : {markSpecialBytesAnywhere, fastestMarkSpecialBytes()}) {
        std::array<std::uint64_t, 4> masks{};
        mark(text.data(), masks.size(), masks.data());
        EXPECT_EQ(masks, expected);
    }
}

}  // namespace
}  // namespace vexa
