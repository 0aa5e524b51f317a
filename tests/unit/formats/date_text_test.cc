#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <vector>

#include "backend/tables/formats/number_text.h"

namespace vexa::tables {
namespace {

constexpr double kMarchMoment = 1772705229;  // 2026-03-05 10:07:09
constexpr double kFirstSecondOfYear1 = -62135596800.0;
constexpr double kFirstSecondOfYear10000 = 253402300800.0;

TEST(DateText, DatesAndTimes) {
    struct Row {
        double seconds;
        FormatKind kind;
        const char* text;
    };
    const std::vector<Row> rows = {
        {kMarchMoment, FormatKind::date, "05-Mar-2026"},
        {kMarchMoment, FormatKind::americanDate, "03/05/2026"},
        {kMarchMoment, FormatKind::europeanDate, "05.03.2026"},
        {kMarchMoment, FormatKind::sortableDate, "2026/03/05"},
        {kMarchMoment, FormatKind::dateTime, "05-Mar-2026 10:07:09"},
        {0, FormatKind::date, "01-Jan-1970"},
        {0, FormatKind::dateTime, "01-Jan-1970 00:00:00"},
        {-0.5, FormatKind::dateTime, "31-Dec-1969 23:59:59"},
        {-1, FormatKind::date, "31-Dec-1969"},
        {-86400, FormatKind::dateTime, "31-Dec-1969 00:00:00"},
        {86399.999, FormatKind::dateTime, "01-Jan-1970 23:59:59"},
        {951782400, FormatKind::date, "29-Feb-2000"},
        {-2203977600.0, FormatKind::date, "28-Feb-1900"},
        {-2203891200.0, FormatKind::date, "01-Mar-1900"},
        {kFirstSecondOfYear1, FormatKind::dateTime, "01-Jan-0001 00:00:00"},
        {kFirstSecondOfYear1 - 1, FormatKind::date, "-62135596801"},
        {kFirstSecondOfYear10000 - 1, FormatKind::dateTime, "31-Dec-9999 23:59:59"},
        {kFirstSecondOfYear10000, FormatKind::sortableDate, "253402300800"},
        {1e300, FormatKind::date, "1e+300"},
        {10 * 3600 + 7 * 60 + 9, FormatKind::time, "10:07:09"},
        {9, FormatKind::time, "00:00:09"},
        {9.99, FormatKind::time, "00:00:09"},
        {100 * 3600 + 59, FormatKind::time, "100:00:59"},
        {-90, FormatKind::time, "-00:01:30"},
        {-0.5, FormatKind::time, "00:00:00"},
        {999999999999999.0, FormatKind::time, "277777777777:46:39"},
        {1e15, FormatKind::time, "1e+15"},
        {-1e300, FormatKind::time, "-1e+300"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(numberText(row.seconds, {row.kind, 0, 0}), row.text) << row.seconds;
        const std::optional<double> back = parseNumber(row.text, {row.kind, 0, 0});
        ASSERT_TRUE(back.has_value()) << row.text;
        EXPECT_EQ(numberText(*back, {row.kind, 0, 0}), row.text);
    }
}

TEST(DateText, EveryDayOfTheCalendarIsReadAsItIsWritten) {
    constexpr double kDay = 86400;
    for (const FormatKind kind : {FormatKind::date, FormatKind::americanDate, FormatKind::europeanDate,
                                  FormatKind::sortableDate, FormatKind::dateTime}) {
        for (double second = kFirstSecondOfYear1; second < kFirstSecondOfYear10000; second += 97 * kDay) {
            ASSERT_EQ(parseNumber(numberText(second, {kind, 0, 0}), {kind, 0, 0}), second);
        }
    }
}

TEST(DateText, WhatTheCalendarHasNotIsRefused) {
    struct Row {
        const char* text;
        FormatKind kind;
    };
    for (const Row& row : {Row{"29-Feb-2025", FormatKind::date},
                           {"32-Jan-2025", FormatKind::date},
                           {"00-Jan-2025", FormatKind::date},
                           {"01-Jan-0000", FormatKind::date},
                           {"01-Jan-12025", FormatKind::date},
                           {"01-Mai-2025", FormatKind::date},
                           {"01-January-2025", FormatKind::date},
                           {"01-Jan-2025 ", FormatKind::dateTime},
                           {"01-Jan-2025 24:00:00", FormatKind::dateTime},
                           {"01-Jan-2025 23:60:00", FormatKind::dateTime},
                           {"01-Jan-2025 23:00", FormatKind::dateTime},
                           {"01-Jan-2025x", FormatKind::date},
                           {"13/01/2025", FormatKind::americanDate},
                           {"01.13.2025", FormatKind::europeanDate},
                           {"2025/13/01", FormatKind::sortableDate},
                           {"2025-01-01", FormatKind::sortableDate},
                           {"10:07", FormatKind::time},
                           {"10:07:60", FormatKind::time},
                           {"--10:07:09", FormatKind::time},
                           {":07:09", FormatKind::time},
                           {"9999999999999:00:00", FormatKind::time},
                           {"", FormatKind::time},
                           {"", FormatKind::date}}) {
        EXPECT_EQ(parseNumber(row.text, {row.kind, 0, 0}), std::nullopt) << row.text;
    }
}

TEST(DateText, MonthsAreReadInAnyCase) {
    EXPECT_EQ(parseNumber("5-MAR-2026", {FormatKind::date, 0, 0}), kMarchMoment - (10 * 3600 + 7 * 60 + 9));
    EXPECT_EQ(parseNumber("5-mar-2026 10:7:9", {FormatKind::dateTime, 0, 0}), kMarchMoment);
}

}  // namespace
}  // namespace vexa::tables
