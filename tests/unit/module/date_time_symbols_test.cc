#include "module/frame/date_time_symbols.h"

#include <gtest/gtest.h>

#include <string>

#include "backend/paths/path_factory.h"
#include "backend/platform/clock.h"
#include "backend/strings/string_table.h"
#include "tests/unit/module/temporary_folder.h"
#include "tests/unit/strings/sample_tables.h"

namespace vexa {
namespace {

class DateTimeSymbols : public testing::Test {
  protected:
    DateTimeSymbols() { installLocalTime(LocalTime{2026, 3, 5, 10, 7, 9}); }
    ~DateTimeSymbols() override {
        installLocalTime(std::nullopt);
        installPaths("", "");
        forgetStringTables();
    }

    /// Makes an installation whose English table has `units`.
    void installTable(const std::string& units) {
        static_cast<void>(folder_.write("lang/en/outmodify.xlf", tableOf(units)));
        installPaths(folder_.path().string(), "en");
    }

    static std::string at(int hour, int minute, int second, std::string_view symbol) {
        installLocalTime(LocalTime{2026, 3, 5, hour, minute, second});
        return ExpandDateTimeSymbols(symbol);
    }

    TemporaryFolder folder_;
};

TEST_F(DateTimeSymbols, AreReplacedByTheCurrentDateAndTime) {
    installTable("<trans-unit id=\"TFOMarch\"><source>March</source></trans-unit>");
    EXPECT_EQ(ExpandDateTimeSymbols(")DATE"), "5-March-2026");
    EXPECT_EQ(ExpandDateTimeSymbols(")ADATE"), "3/5/2026");
    EXPECT_EQ(ExpandDateTimeSymbols(")EDATE"), "5.3.2026");
    EXPECT_EQ(ExpandDateTimeSymbols(")SDATE"), "2026/3/5");
    EXPECT_EQ(ExpandDateTimeSymbols(")TIME"), "10:07:09");
    EXPECT_EQ(ExpandDateTimeSymbols(")ETIME"), "010:07:09");
}

TEST_F(DateTimeSymbols, HoursOfEveryHourOfTheDay) {
    for (int hour = 0; hour < 24; ++hour) {
        const std::string rest = ":30:05";
        EXPECT_EQ(at(hour, 30, 5, ")TIME"), std::to_string(hour % 12) + rest);
        EXPECT_EQ(at(hour, 30, 5, ")ETIME"), (hour < 12 ? "0" : "") + std::to_string(hour) + rest);
    }
    EXPECT_EQ(at(11, 30, 5, ")ETIME"), "011:30:05");
    EXPECT_EQ(at(11, 30, 5, ")TIME"), "11:30:05");
    EXPECT_EQ(at(12, 0, 0, ")TIME"), "0:00:00");
    EXPECT_EQ(at(12, 0, 0, ")ETIME"), "12:00:00");
    EXPECT_EQ(at(0, 5, 0, ")ETIME"), "00:05:00");
    EXPECT_EQ(at(0, 5, 0, ")TIME"), "0:05:00");
    EXPECT_EQ(at(9, 0, 0, ")ETIME"), "09:00:00");
    EXPECT_EQ(at(23, 59, 59, ")ETIME)TIME"), "23:59:5911:59:59");
}

TEST_F(DateTimeSymbols, MinutesAndSecondsHaveTwoDigits) {
    for (int number = 0; number < 60; ++number) {
        const std::string digits = (number < 10 ? "0" : "") + std::to_string(number);
        EXPECT_EQ(at(1, number, 59 - number, ")TIME").substr(0, 4), "1:" + digits);
        EXPECT_EQ(at(1, 0, number, ")TIME"), "1:00:" + digits);
    }
}

TEST_F(DateTimeSymbols, DaysMonthsAndYearsAreWrittenOut) {
    installLocalTime(LocalTime{987, 12, 31, 0, 0, 0});
    EXPECT_EQ(ExpandDateTimeSymbols(")ADATE )EDATE )SDATE"), "12/31/987 31.12.987 987/12/31");
}

TEST_F(DateTimeSymbols, EveryMonthIsLookedUpUnderItsKey) {
    constexpr std::string_view kMonths[] = {"January",   "February", "March",    "April",
                                            "May",       "June",     "July",     "August",
                                            "September", "October",  "November", "December"};
    std::string units;
    for (const std::string_view month : kMonths) {
        const std::string name(month);
        units += "<trans-unit id=\"TFO" + name + "\"><source>" + name + "</source><target>in " + name +
                 "</target></trans-unit>";
    }
    installTable(units);
    for (int month = 1; month <= 12; ++month) {
        installLocalTime(LocalTime{2026, month, 1, 0, 0, 0});
        EXPECT_EQ(ExpandDateTimeSymbols(")DATE"), "1-in " + std::string(kMonths[month - 1]) + "-2026");
    }
}

TEST_F(DateTimeSymbols, AMonthWithoutATextIsItsKey) {
    installPaths((folder_.path() / "nowhere").string(), "en");
    EXPECT_EQ(ExpandDateTimeSymbols(")DATE"), "5-TFOMarch-2026");
    installPaths("", "");
    EXPECT_EQ(ExpandDateTimeSymbols(")DATE"), "5-TFOMarch-2026");
}

TEST_F(DateTimeSymbols, AMonthWithAnEmptyTextIsItsKey) {
    installTable("<trans-unit id=\"TFOMarch\"><source/></trans-unit>");
    EXPECT_EQ(ExpandDateTimeSymbols(")DATE"), "5-TFOMarch-2026");
}

TEST_F(DateTimeSymbols, AMonthThatSpellsItsOwnSymbolEnds) {
    installTable("<trans-unit id=\"TFOMarch\"><source>a)DATEb</source></trans-unit>");
    EXPECT_EQ(ExpandDateTimeSymbols(")DATE)DATE"), "5-a)DATEb-20265-a)DATEb-2026");
}

TEST_F(DateTimeSymbols, AnythingElseStays) {
    for (const char* const text :
         {"", ")", "))", "DATE", ")date", ")Date", ") DATE", ")BDATE", ")ETIM", ")time", "(DATE)"}) {
        EXPECT_EQ(ExpandDateTimeSymbols(text), text);
    }
}

TEST_F(DateTimeSymbols, EachPairOfSymbolsIsReplacedInEitherOrder) {
    constexpr std::string_view kSymbols[] = {")DATE", ")ADATE", ")EDATE", ")SDATE", ")TIME", ")ETIME"};
    for (const std::string_view first : kSymbols) {
        for (const std::string_view second : kSymbols) {
            const std::string one = ExpandDateTimeSymbols(first);
            const std::string other = ExpandDateTimeSymbols(second);
            EXPECT_EQ(ExpandDateTimeSymbols(std::string(first).append(second)), one + other);
            EXPECT_EQ(ExpandDateTimeSymbols("x" + std::string(first) + " " + std::string(second) + ")"),
                      "x" + one + " " + other + ")");
        }
    }
}

TEST_F(DateTimeSymbols, ManySymbolsTakeNoLongerThanTheirText) {
    std::string text;
    for (int i = 0; i < 100000; ++i) {
        text += ")EDATE";
    }
    EXPECT_EQ(ExpandDateTimeSymbols(text).size(), 100000 * std::string_view("5.3.2026").size());
}

TEST_F(DateTimeSymbols, BytesAroundASymbolAreKept) {
    const std::string text("\0\xFF)EDATE\0", 9);
    EXPECT_EQ(ExpandDateTimeSymbols(text), std::string("\0\xFF"
                                                       "5.3.2026\0",
                                                       11));
}

}  // namespace
}  // namespace vexa
