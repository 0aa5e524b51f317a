#include "backend/tables/formats/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace vexa::tables {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

/// `value` in the format of that name; no format for an empty name.
std::string shown(double value, const std::string& name) {
    const std::optional<DisplayFormat> format = name.empty() ? DisplayFormat{} : parseFormat(name);
    return format ? numberText(value, *format) : "no format " + name;
}

struct Row {
    double value;
    const char* format;
    const char* text;
};

void expectRows(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        EXPECT_EQ(shown(row.value, row.format), row.text) << row.value << ' ' << row.format;
    }
}

TEST(NumberText, FixedDecimals) {
    expectRows({{0.5, "F5.2", "0.50"},
                {0, "F5.2", "0.00"},
                {0, "F5.0", "0"},
                {-0.5, "F5.2", "-0.50"},
                {12, "F8.0", "12"},
                {1234567.891, "F8.2", "1234567.89"},
                {-1234567.891, "F2.1", "-1234567.9"},
                {9.999, "F8.2", "10.00"},
                {99.995, "F8.2", "100.00"},
                {0.05, "F8.1", "0.1"},
                {0.049, "F8.1", "0.0"},
                {1.0 / 3, "F40.16", "0.3333333333333333"},
                {1.1, "F40.16", "1.1000000000000000"},
                {1.1 + 2.2, "F40.16", "3.3000000000000003"},
                {0.1, "F40.16", "0.1000000000000000"},
                {1e-7, "F40.16", "0.0000001000000000"},
                {123456789012345.0, "F20.2", "123456789012345.00"},
                {123456789012.345, "F20.2", "123456789012.35"}});
}

TEST(NumberText, HalvesOfFifteenDigitsGoAwayFromZero) {
    expectRows({{0.5, "F5.0", "1"},
                {1.5, "F5.0", "2"},
                {2.5, "F5.0", "3"},
                {-0.5, "F5.0", "-1"},
                {-2.5, "F5.0", "-3"},
                {0.285, "F5.2", "0.29"},
                {-0.285, "F5.2", "-0.29"},
                {1.005, "F5.2", "1.01"},
                {2.675, "F5.2", "2.68"},
                {1.115, "F5.2", "1.12"},
                {8.345, "F5.2", "8.35"},
                {0.1 + 0.2 - 0.05, "F5.1", "0.3"},
                {1.15 * 100, "F5.0", "115"},
                {1.1 * 1.5, "F5.1", "1.7"},
                {0.15, "F5.1", "0.2"},
                {0.25, "F5.1", "0.3"},
                {0.000000000000005, "F20.14", "0.00000000000001"},
                {2251799813685248.5, "F20.0", "2251799813685249"},
                {0.49999999999999994, "F5.0", "1"},
                {0.499999999999999, "F5.0", "0"},
                {2.4999999999999996, "F5.0", "3"},
                {2.499999999999990, "F5.0", "2"}});
}

TEST(NumberText, ARoundedZeroHasNoMinus) {
    expectRows({{-0.0, "F5.2", "0.00"},
                {-0.0, "", "0"},
                {-0.004, "F5.2", "0.00"},
                {-0.005, "F5.2", "-0.01"},
                {-0.0049999999999, "F5.2", "0.00"},
                {-1e-300, "F5.2", "0.00"},
                {-5e-324, "COMMA9.2", "0.00"},
                {-0.001, "DOLLAR9.2", "$0.00"},
                {-0.04, "PCT5.1", "0.0%"},
                {-0.4, "N4", "0000"},
                {-0.0, "E9.2", "0.00E+00"},
                {-0.9, "TIME8", "00:00:00"}});
}

TEST(NumberText, GroupsAndSigns) {
    expectRows({{1234.5, "COMMA9.2", "1,234.50"},
                {-1234567.5, "COMMA9.2", "-1,234,567.50"},
                {123, "COMMA9.0", "123"},
                {999.995, "COMMA9.2", "1,000.00"},
                {1e15, "COMMA9.0", "1,000,000,000,000,000"},
                {1e21, "COMMA9.1", "1,000,000,000,000,000,000,000.0"},
                {123456.789, "COMMA9.3", "123,456.789"},
                {1234.5, "DOT9.2", "1.234,50"},
                {-0.5, "DOT9.1", "-0,5"},
                {1234567, "DOT9.0", "1.234.567"},
                {-5, "DOLLAR9.2", "-$5.00"},
                {1234.5, "DOLLAR9.2", "$1,234.50"},
                {0, "DOLLAR9.0", "$0"},
                {12.345, "PCT5.1", "12.3%"},
                {-12.35, "PCT5.1", "-12.4%"},
                {1234, "PCT5.0", "1234%"}});
}

TEST(NumberText, ScientificAndZeroPadded) {
    expectRows({{1.5, "E9.2", "1.50E+00"},
                {0, "E9.2", "0.00E+00"},
                {-1234.5, "E9.2", "-1.23E+03"},
                {1235, "E9.2", "1.24E+03"},
                {9.995, "E9.2", "1.00E+01"},
                {9.5, "E9.0", "1E+01"},
                {0.00012345, "E12.4", "1.2345E-04"},
                {1e300, "E9.2", "1.00E+300"},
                {5e-324, "E9.2", "4.94E-324"},
                {1.0 / 3, "E40.16", "3.3333333333333330E-01"},
                {0.1, "E40.14", "1.00000000000000E-01"},
                {123, "N6", "000123"},
                {-123, "N6", "-00123"},
                {1234567, "N6", "1234567"},
                {0, "N6", "000000"},
                {12.5, "N8.2", "00012.50"},
                {2.5, "N3", "003"}});
}

TEST(NumberText, WithoutFormat) {
    expectRows({{0, "", "0"},
                {12, "", "12"},
                {-12.5, "", "-12.5"},
                {0.1, "", "0.1"},
                {0.1 + 0.2, "", "0.3"},
                {1.0 / 3, "", "0.333333333333333"},
                {2.0 / 3, "", "0.666666666666667"},
                {1e15, "", "1e+15"},
                {123456789012345.0, "", "123456789012345"},
                {999999999999999.0, "", "999999999999999"},
                {0.0001, "", "0.0001"},
                {0.00001, "", "1e-05"},
                {123456.789, "", "123456.789"},
                {1e300, "", "1e+300"},
                {-5e-324, "", "-4.94065645841247e-324"},
                {1.7976931348623157e308, "", "1.79769313486232e+308"}});
}

TEST(NumberText, HugeAndTinyNumbersAreShownInFull) {
    expectRows({{9007199254740991.0, "F16.0", "9007199254740991"},
                {9007199254740993.0, "F16.0", "9007199254740992"},
                {-9007199254740992.0, "F16.1", "-9007199254740992.0"},
                {1e22, "F8.2", "10000000000000000000000.00"},
                {5e-324, "F8.2", "0.00"},
                {2.2250738585072014e-308, "F40.16", "0.0000000000000000"}});
    EXPECT_EQ(shown(1e300, "F8.2"), "1" + std::string(300, '0') + ".00");
    EXPECT_EQ(shown(-1e300, "F8.0"), "-1" + std::string(300, '0'));
    EXPECT_EQ(shown(1.7976931348623157e308, "F8.0"), "17976931348623157" + std::string(292, '0'));
    EXPECT_EQ(shown(1e300, "N40"), "1" + std::string(300, '0'));
    EXPECT_EQ(shown(1e299, "COMMA9.1").size(), 300 + 99 + 2U);
}

TEST(NumberText, WhatIsNoNumberHasItsName) {
    for (const char* name :
         {"", "F8.2", "COMMA8.2", "DOLLAR8.2", "PCT8.2", "E8.2", "N8", "DATE", "TIME8", "DATETIME"}) {
        EXPECT_EQ(shown(kNan, name), "nan") << name;
        EXPECT_EQ(shown(-kNan, name), "nan") << name;
        EXPECT_EQ(shown(kInfinity, name), "inf") << name;
        EXPECT_EQ(shown(-kInfinity, name), "-inf") << name;
    }
}

TEST(NumberText, OneNumberInEveryFormat) {
    expectRows({{1234.5, "F8.2", "1234.50"},
                {1234.5, "COMMA9.2", "1,234.50"},
                {1234.5, "DOT9.2", "1.234,50"},
                {1234.5, "DOLLAR9.2", "$1,234.50"},
                {1234.5, "PCT8.1", "1234.5%"},
                {1234.5, "E9.2", "1.23E+03"},
                {1234.5, "N6", "001235"},
                {1234.5, "", "1234.5"},
                {1772705229, "TIME", "492418:07:09"}});
}

TEST(NumberText, IsAppended) {
    std::string text = "mean ";
    appendNumber(text, 1.5, {FormatKind::plain, 8, 2});
    appendNumber(text, -2, {FormatKind::dollar, 8, 0});
    appendNumber(text, 0, {FormatKind::date, 0, 0});
    appendShortest(text, 0.1);
    EXPECT_EQ(text, "mean 1.50-$201-Jan-19700.1");
}

TEST(NumberText, ShortestTextReadsAsTheSameNumber) {
    struct Case {
        double value;
        const char* text;
    };
    for (const Case& each :
         {Case{0, "0"}, Case{-0.0, "-0"}, Case{0.1, "0.1"}, Case{0.1 + 0.2, "0.30000000000000004"},
          Case{1e300, "1e+300"}, Case{5e-324, "5e-324"}, Case{-12.5, "-12.5"}, Case{1e21, "1e+21"},
          Case{100000, "100000"}, Case{-999999999999999.0, "-999999999999999"}, Case{kInfinity, "inf"},
          Case{-kInfinity, "-inf"}}) {
        std::string text;
        appendShortest(text, each.value);
        EXPECT_EQ(text, each.text);
        const std::optional<double> back = parseNumber(text, {});
        ASSERT_TRUE(back.has_value()) << text;
        EXPECT_EQ(*back, each.value);
        EXPECT_EQ(std::signbit(*back), std::signbit(each.value));
    }
    std::string text;
    appendShortest(text, kNan);
    EXPECT_EQ(text, "nan");
    EXPECT_TRUE(std::isnan(parseNumber(text, {}).value_or(0)));
}

TEST(NumberText, TextsAreReadInTheirFormat) {
    struct Case {
        const char* text;
        const char* format;
        std::optional<double> value;
    };
    const std::vector<Case> cases = {{"1.50", "F8.2", 1.5},
                                     {" 1.50 ", "F8.2", 1.5},
                                     {"+1.5", "F8.2", 1.5},
                                     {".5", "F8.2", 0.5},
                                     {"1.5E+00", "E9.2", 1.5},
                                     {"1.234,5", "DOT9.2", 1234.5},
                                     {"1234,5", "DOT9.2", 1234.5},
                                     {"1,234,567.5", "COMMA9.2", 1234567.5},
                                     {"1,234", "COMMA9.2", 1234},
                                     {"-$1,234.50", "DOLLAR9.2", -1234.5},
                                     {"$5", "DOLLAR9.2", 5},
                                     {"-5", "DOLLAR9.2", -5},
                                     {"5", "DOLLAR9.2", 5},
                                     {"12.5%", "PCT9.2", 12.5},
                                     {"12.5", "PCT9.2", 12.5},
                                     {"000123", "N6", 123},
                                     {"-00123", "N6", -123},
                                     {"inf", "F8.2", kInfinity},
                                     {"", "F8.2", std::nullopt},
                                     {"+-1", "F8.2", std::nullopt},
                                     {"++1", "F8.2", std::nullopt},
                                     {"1 2", "F8.2", std::nullopt},
                                     {"1,5", "F8.2", std::nullopt},
                                     {"1,5", "COMMA9.2", std::nullopt},
                                     {"1,2345", "COMMA9.2", std::nullopt},
                                     {",123", "COMMA9.2", std::nullopt},
                                     {"1.5,123", "COMMA9.2", std::nullopt},
                                     {"1,234,5", "DOT9.2", std::nullopt},
                                     {"$", "DOLLAR9.2", std::nullopt},
                                     {"--5", "DOLLAR9.2", std::nullopt},
                                     {"-$-5", "DOLLAR9.2", std::nullopt},
                                     {"-", "DOLLAR9.2", std::nullopt},
                                     {"%", "PCT9.2", std::nullopt},
                                     {"1%%", "PCT9.2", std::nullopt},
                                     {"1e999", "F8.2", std::nullopt},
                                     {"0x10", "F8.2", std::nullopt},
                                     {"one", "F8.2", std::nullopt}};
    for (const Case& each : cases) {
        EXPECT_EQ(parseNumber(each.text, parseFormat(each.format).value()), each.value)
            << '[' << each.text << "] " << each.format;
    }
}

}  // namespace
}  // namespace vexa::tables
