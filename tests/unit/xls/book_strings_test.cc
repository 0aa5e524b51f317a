#include "frontend/export/xls/book_strings.h"

#include <gtest/gtest.h>

#include <random>

#include "frontend/export/xls/record_reader.h"

namespace vexa::frontend {
namespace {

using biff::BookStrings;

std::string written(const BookStrings& strings) {
    std::string bytes;
    strings.append(bytes);
    return bytes;
}

/// Lengths of the records that the table is made of; each must be one that is allowed.
std::vector<std::size_t> lengths(const std::string& bytes) {
    std::vector<std::size_t> found;
    for (std::size_t at = 0; at < bytes.size(); at += 4 + found.back()) {
        EXPECT_EQ(biff::twoAt(bytes, at), at == 0 ? biff::id::sst : biff::id::continued);
        found.push_back(biff::twoAt(bytes, at + 2));
        EXPECT_LE(found.back(), biff::mostBytes);
    }
    return found;
}

/// A text that is cut where it does not fit anymore, read by the rules: behind a cut stands a byte that says
/// how wide characters are.
std::string textAt(const std::string& bytes, std::size_t at, std::size_t recordEnd) {
    std::string text;
    std::size_t units = biff::twoAt(bytes, at);
    bool wide = (bytes[at + 2] & 1) != 0;
    at += (bytes[at + 2] & 8) != 0 ? 5U : 3U;
    while (units > 0) {
        if (at == recordEnd) {
            recordEnd = at + 4 + biff::twoAt(bytes, at + 2);
            wide = (bytes[at + 4] & 1) != 0;
            at += 5;
        }
        const std::uint32_t unit = biff::numberAt(bytes, at, wide ? 2 : 1);
        at += wide ? 2 : 1;
        text += unit < 0x80 ? static_cast<char>(unit) : '?';
        --units;
    }
    return text;
}

TEST(BookStrings, ATableWithoutTextsGetsThemInItsFirstRecord) {
    const std::string none = written(BookStrings());
    BookStrings strings;
    ASSERT_TRUE(strings.read(none));
    EXPECT_EQ(written(strings), none);
    EXPECT_EQ(strings.add("a", 0, 0), 0U);
    const std::string bytes = written(strings);
    EXPECT_EQ(lengths(bytes), std::vector<std::size_t>{12});
    EXPECT_EQ(textAt(bytes, 12, bytes.size()), "a");
}

TEST(BookStrings, NumbersEqualTextsOnce) {
    BookStrings strings;
    EXPECT_TRUE(strings.empty());
    EXPECT_EQ(strings.add("a", 0, 0), 0U);
    EXPECT_EQ(strings.add("b", 0, 0), 1U);
    EXPECT_EQ(strings.add("a", 0, 0), 0U);
    EXPECT_EQ(strings.add("a", 1, 6), 2U);
    EXPECT_EQ(strings.add("a", 1, 7), 3U);
    const std::string bytes = written(strings);
    EXPECT_EQ(biff::fourAt(bytes, 4), 5U);
    EXPECT_EQ(biff::fourAt(bytes, 8), 4U);
}

TEST(BookStrings, TheIndexLeadsToTexts) {
    std::mt19937 random(5);
    BookStrings strings;
    std::vector<std::string> texts;
    for (unsigned i = 0; i < 3000; ++i) {
        std::string text = std::to_string(i) + std::string(random() % 90, static_cast<char>('a' + i % 26));
        if (i % 3 == 0) text += "\xE2\x82\xAC";
        if (i % 500 == 0) text += std::string(20'000, 'z');
        EXPECT_EQ(strings.add(text, i % 5 == 0 ? 1 : 0, 6), i);
        texts.push_back(text);
    }
    const std::string bytes = written(strings);
    EXPECT_GT(lengths(bytes).size(), 10U);
    std::string index;
    strings.appendIndex(index, 1000);
    const std::size_t step = biff::twoAt(index, 4);
    std::size_t entries = 0;
    for (std::size_t at = 6; at < index.size(); at += 8, ++entries) {
        const std::size_t place = biff::fourAt(index, at) - 1000;
        const std::size_t inside = biff::twoAt(index, at + 4);
        const std::size_t recordEnd = place - inside + 4 + biff::twoAt(bytes, place - inside + 2);
        std::string expected = texts[entries * step];
        if (entries * step % 3 == 0) expected.replace(expected.find("\xE2\x82\xAC"), 3, "?");
        EXPECT_EQ(textAt(bytes, place, recordEnd), expected);
    }
    EXPECT_EQ(entries, (texts.size() + step - 1) / step);
}

TEST(BookStrings, ReadsItsOwnTableAndGoesOn) {
    BookStrings first;
    for (int i = 0; i < 2000; ++i) {
        first.add(std::string(static_cast<std::size_t>(i % 70), 'x') + std::to_string(i), i % 7 == 0 ? 1 : 0,
                  6);
    }
    const std::string table = written(first);
    BookStrings second;
    ASSERT_TRUE(second.read(table));
    EXPECT_FALSE(second.changed());
    EXPECT_EQ(written(second), table);
    EXPECT_EQ(second.add("new", 0, 0), 2000U);
    EXPECT_TRUE(second.changed());
    const std::string grown = written(second);
    EXPECT_EQ(grown.substr(12, table.size() - 12), table.substr(12));
    BookStrings third;
    ASSERT_TRUE(third.read(grown));
    EXPECT_EQ(third.add("newer", 0, 0), 2001U);
    std::string once;
    std::string twice;
    second.appendIndex(once, 0);
    third.add("newest", 0, 0);
    third.appendIndex(twice, 0);
    EXPECT_EQ(once.substr(4, 8 * 100), twice.substr(4, 8 * 100));
}

TEST(BookStrings, RefusesTablesThatEndEarly) {
    BookStrings strings;
    for (int i = 0; i < 300; ++i)
        strings.add(std::string(50, 'y') + std::to_string(i), i % 2 == 0 ? 1 : 0, 6);
    const std::string table = written(strings);
    for (std::size_t missing = 1; missing < 400; missing += 7) {
        std::string cut = table.substr(0, table.size() - missing);
        // The record is as long as the bytes that are there.
        const std::vector<std::size_t> all = lengths(table);
        const std::size_t lastAt = table.size() - all.back() - 4;
        if (cut.size() < lastAt + 4) break;
        biff::setNumber(cut, lastAt + 2, static_cast<std::uint32_t>(cut.size() - lastAt - 4), 2);
        BookStrings read;
        EXPECT_FALSE(read.read(cut)) << missing;
    }
    std::string many = table;
    biff::setNumber(many, 8, 0xFFFFFFFF, 4);
    BookStrings read;
    EXPECT_FALSE(read.read(many));
    EXPECT_FALSE(read.read(table.substr(0, 10)));
}

TEST(BookStrings, CharactersAreNeverHalved) {
    // Whatever comes before, a wide text is cut between two of its characters.
    for (std::size_t before = biff::mostBytes - 60; before < biff::mostBytes; ++before) {
        BookStrings strings;
        strings.add(std::string(before - 8 - 3, 'a'), 0, 0);
        std::string wide;
        for (int i = 0; i < 40; ++i) wide += "\xE2\x82\xAC";
        strings.add(wide, 3, 6);
        BookStrings read;
        const std::string bytes = written(strings);
        lengths(bytes);
        ASSERT_TRUE(read.read(bytes)) << before;
    }
}

}  // namespace
}  // namespace vexa::frontend
