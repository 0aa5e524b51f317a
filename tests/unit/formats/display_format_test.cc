#include "backend/tables/formats/display_format.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace vexa::tables {
namespace {

TEST(DisplayFormat, ReadsTheNamesOfFormats) {
    struct Row {
        const char* name;
        DisplayFormat format;
        const char* text;
    };
    const std::vector<Row> rows = {
        {"F8.2", {FormatKind::plain, 8, 2}, "F8.2"},
        {"f8", {FormatKind::plain, 8, 0}, "F8.0"},
        {"F5.0", {FormatKind::plain, 5, 0}, "F5.0"},
        {"F1", {FormatKind::plain, 1, 0}, "F1.0"},
        {"F08.02", {FormatKind::plain, 8, 2}, "F8.2"},
        {"F40.16", {FormatKind::plain, 40, 16}, "F40.16"},
        {"F17.16", {FormatKind::plain, 17, 16}, "F17.16"},
        {"COMMA10", {FormatKind::comma, 10, 0}, "COMMA10.0"},
        {"Comma12.2", {FormatKind::comma, 12, 2}, "COMMA12.2"},
        {"DOT10.1", {FormatKind::dot, 10, 1}, "DOT10.1"},
        {"dollar12.2", {FormatKind::dollar, 12, 2}, "DOLLAR12.2"},
        {"PCT5.1", {FormatKind::percent, 5, 1}, "PCT5.1"},
        {"E9.2", {FormatKind::scientific, 9, 2}, "E9.2"},
        {"N6", {FormatKind::zeroPadded, 6, 0}, "N6"},
        {"N8.2", {FormatKind::zeroPadded, 8, 2}, "N8.2"},
        {"DATE", {FormatKind::date, 0, 0}, "DATE"},
        {"date11", {FormatKind::date, 11, 0}, "DATE11"},
        {"ADATE10", {FormatKind::americanDate, 10, 0}, "ADATE10"},
        {"EDATE", {FormatKind::europeanDate, 0, 0}, "EDATE"},
        {"SDATE10", {FormatKind::sortableDate, 10, 0}, "SDATE10"},
        {"TIME8", {FormatKind::time, 8, 0}, "TIME8"},
        {"DateTime20", {FormatKind::dateTime, 20, 0}, "DATETIME20"},
        {" F8.2\t", {FormatKind::plain, 8, 2}, "F8.2"},
    };
    for (const Row& row : rows) {
        const std::optional<DisplayFormat> format = parseFormat(row.name);
        ASSERT_TRUE(format.has_value()) << row.name;
        EXPECT_EQ(*format, row.format) << row.name;
        EXPECT_EQ(formatText(*format), row.text) << row.name;
        EXPECT_EQ(parseFormat(row.text), format) << row.text;
    }
}

TEST(DisplayFormat, RefusesWhatDoesNotExist) {
    for (const char* name : {"",
                             " ",
                             "F",
                             "N",
                             "E",
                             "COMMA",
                             "F0",
                             "F0.0",
                             "F41",
                             "F400",
                             "F8.",
                             "F.2",
                             "F8.17",
                             "F8.8",
                             "F8.9",
                             "F2.16",
                             "F8.2.1",
                             "F8,2",
                             "F-8.2",
                             "F+8",
                             "F 8.2",
                             "F8 .2",
                             "F8.2x",
                             "XF8.2",
                             "FF8",
                             "8.2",
                             "8",
                             ".",
                             "DATE0",
                             "DATE41",
                             "DATE11.0",
                             "TIME11.2",
                             "DATETIME20.3",
                             "ADATEX",
                             "DAT",
                             "DATES",
                             "WKDAY3",
                             "A8",
                             "F8.2;F9",
                             "F8.002",
                             "F008",
                             "\xEF\xBC\xA6"
                             "8.2"}) {
        EXPECT_EQ(parseFormat(name), std::nullopt) << '[' << name << ']';
    }
    EXPECT_EQ(parseFormat(std::string_view("F8.2\0", 5)), std::nullopt);
    EXPECT_EQ(parseFormat(std::string(100000, 'F')), std::nullopt);
    EXPECT_EQ(parseFormat("F" + std::string(100000, '1')), std::nullopt);
}

TEST(DisplayFormat, EveryFormatHasANameOfItsOwn) {
    int formats = 0;
    for (int kind = 1; kind <= static_cast<int>(FormatKind::dateTime); ++kind) {
        const bool seconds = countsSeconds(static_cast<FormatKind>(kind));
        for (int width = seconds ? 0 : 1; width <= kGreatestFormatWidth; ++width) {
            for (int decimals = 0;
                 decimals == 0 || (!seconds && decimals < width && decimals <= kMostFormatDecimals);
                 ++decimals) {
                const DisplayFormat format{static_cast<FormatKind>(kind), static_cast<std::uint8_t>(width),
                                           static_cast<std::uint8_t>(decimals)};
                EXPECT_EQ(parseFormat(formatText(format)), format) << formatText(format);
                ++formats;
            }
        }
    }
    EXPECT_EQ(formats, 7 * (16 * 17 / 2 + 24 * 17) + 6 * 41);
}

TEST(DisplayFormat, NoFormatHasNoName) {
    EXPECT_EQ(formatText({}), "");
    EXPECT_EQ(parseFormat(formatText({})), std::nullopt);
}

}  // namespace
}  // namespace vexa::tables
