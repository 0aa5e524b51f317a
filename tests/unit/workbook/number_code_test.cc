#include "frontend/export/workbook/number_code.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "backend/tables/formats/number_text.h"

namespace vexa::frontend {
namespace {

using tables::parseFormat;

/// The value and the code of a cell, or "text" where it cannot be a number.
std::string cellOf(double value, const std::string& format) {
    const SheetNumber number = sheetNumber(value, parseFormat(format).value_or(tables::DisplayFormat{}));
    if (number.obstacle != NumberObstacle::none) return "text";
    return tables::numberText(number.value, {}) + "|" + formatCode(number.format, number.minusIsDropped);
}

struct Expected {
    double value;
    const char* format;
    const char* cell;
};

void check(const std::vector<Expected>& all) {
    for (const Expected& each : all) {
        EXPECT_EQ(cellOf(each.value, each.format), each.cell) << each.value << " " << each.format;
    }
}

TEST(NumberCode, KeepsTheValueAndShowsItAsTheFormatDoes) {
    check({{1234.5, "F8.2", "1234.5|0.00"},
           {1234.5, "F8.0", "1234.5|0"},
           {1234.5, "COMMA8.1", "1234.5|#,##0.0"},
           {1234.5, "DOT8.1", "1234.5|#,##0.0"},
           {-5, "DOLLAR8.2", "-5|\"$\"#,##0.00"},
           {12.5, "PCT5.1", "12.5|0.0\"%\""},
           {1.5, "E9.2", "1.5|0.00E+00"},
           {1234, "N6", "1234|000000;-00000"},
           {12.5, "N8.2", "12.5|00000.00;-0000.00"},
           {12345, "N2", "12345|00;-0"},
           {0.125, "", "0.125|"}});
}

TEST(NumberCode, HasNoMinusBeforeARoundedZero) {
    check({{-0.004, "F8.2", "-0.004|0.00;0.00"},
           {-0.005, "F8.2", "-0.005|0.00"},
           {-0.4, "PCT5.0", "-0.4|0\"%\";0\"%\""},
           {-0.4, "N4", "-0.4|0000;0000"},
           {-0.0, "", "0|"},
           {-0.0, "F8.2", "0|0.00"}});
}

TEST(NumberCode, CountsDaysForDatesAndTimes) {
    check({{0, "DATE", R"(25569|[$-409]dd\-mmm\-yyyy)"},
           {1772705229, "DATETIME", R"(46086.4216319445|[$-409]dd\-mmm\-yyyy\ hh:mm:ss)"},
           {1772668800, "ADATE", R"(46086|mm\/dd\/yyyy)"},
           {1772668800, "EDATE", R"(46086|dd\.mm\.yyyy)"},
           {1772668800, "SDATE", R"(46086|yyyy\/mm\/dd)"},
           {90000, "TIME", "1.0416666667|[hh]:mm:ss"},
           {0.9, "TIME", "0|[hh]:mm:ss"},
           {-0.9, "TIME", "0|[hh]:mm:ss"}});
}

TEST(NumberCode, LeavesTextsWhereWorkbooksHaveNoNumber) {
    constexpr double marchOf1900 = -2203891200;
    constexpr double year10000 = 253402300800;
    check({{marchOf1900, "DATE", R"(61|[$-409]dd\-mmm\-yyyy)"},
           {marchOf1900 - 1, "DATE", "text"},
           {-62135596800, "SDATE", "text"},
           {-1, "TIME", "text"},
           {4294967295.0, "TIME", "49710.2696180556|[hh]:mm:ss"},
           {4294967296.0, "TIME", "text"},
           {year10000, "DATE", "253402300800|"},
           {1e15, "TIME", "1e+15|"},
           {std::numeric_limits<double>::quiet_NaN(), "F8.2", "text"},
           {std::numeric_limits<double>::infinity(), "DATE", "text"},
           {-std::numeric_limits<double>::infinity(), "", "text"},
           {1e-310, "", "text"},
           {1e-310, "E9.2", "text"},
           {1e-310, "F8.2", "0|0.00"},
           {std::numeric_limits<double>::max(), "", "1.79769313486232e+308|"}});
}

TEST(NumberCode, PutsTextsBehindEverySection) {
    EXPECT_EQ(codeWithSuffix("", " [a]"), "General\" [a]\"");
    EXPECT_EQ(codeWithSuffix("0.00;0.00", " [a]"), "0.00\" [a]\";0.00\" [a]\"");
    EXPECT_EQ(codeWithSuffix("0\"%\"", " [a,b]"), "0\"%\"\" [a,b]\"");
    EXPECT_EQ(literalCode("<.001"), "\"<.001\";\"<.001\"");
    EXPECT_EQ(literalCode("a\"b"), "\"a\"\\\"\"b\";\"a\"\\\"\"b\"");
}

}  // namespace
}  // namespace vexa::frontend
