#include "backend/text/utf8.h"

#include <gtest/gtest.h>

namespace vexa {
namespace {

using std::string;

void expectReadAsWritten(char32_t code) {
    string text;
    appendUtf8(text, code);
    const Utf8Character read = decodeUtf8(text + "x");
    ASSERT_TRUE(read.valid) << static_cast<unsigned>(code);
    ASSERT_EQ(read.code, code);
    ASSERT_EQ(read.length, text.size()) << static_cast<unsigned>(code);
}

TEST(Utf8, CharactersAreReadAsTheyWereWritten) {
    for (char32_t code = 0; code < 0xD800; ++code) expectReadAsWritten(code);
    for (char32_t code = 0xE000; code < 0x10FFFF; code += 13) expectReadAsWritten(code);
    for (const char32_t code : {U'\uFFFF', U'\U00010000', U'\U000FFFFF', U'\U0010FFFF'})
        expectReadAsWritten(code);
}

TEST(Utf8, WhatIsNoCharacterIsWrittenAsTheReplacement) {
    for (const char32_t code :
         {char32_t{0xD800}, char32_t{0xDFFF}, char32_t{0x110000}, char32_t{0xFFFFFFFF}}) {
        string text;
        appendUtf8(text, code);
        EXPECT_EQ(text, "\uFFFD");
    }
}

TEST(Utf8, BrokenBytesAreReplacedOneByOne) {
    const struct {
        string text, valid;
    } cases[] = {
        {"", ""},
        {"plain text, longer than one word", "plain text, longer than one word"},
        {"\u00e4\u6f22\U0001F600", "\u00e4\u6f22\U0001F600"},
        {"\x80", "\uFFFD"},
        {"a\xFFz", "a\uFFFDz"},
        {"\xC3", "\uFFFD"},
        {"\xC3(", "\uFFFD("},
        {"\xE6\xBC", "\uFFFD\uFFFD"},
        {"\xC0\xAF", "\uFFFD\uFFFD"},                      // overlong slash
        {"\xE0\x80\xAF", "\uFFFD\uFFFD\uFFFD"},            // overlong slash
        {"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"},            // surrogate
        {"\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"},  // above U+10FFFF
        {string("a\0b", 3), string("a\0b", 3)},
    };
    for (const auto& one : cases) EXPECT_EQ(validUtf8(one.text), one.valid) << one.text;
}

TEST(Utf8, AsciiPrefixEndsAtTheFirstOtherByte) {
    for (std::size_t length = 0; length < 40; ++length) {
        const string ascii(length, 'a');
        EXPECT_EQ(asciiPrefix(ascii), length);
        EXPECT_EQ(asciiPrefix(ascii + "\xC3\xA4" + ascii), length);
    }
}

}  // namespace
}  // namespace vexa
