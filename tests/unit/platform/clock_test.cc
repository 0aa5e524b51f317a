#include "backend/platform/clock.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

namespace vexa {
namespace {

TEST(ParseLocalTime, ReadsMomentsOfTheCalendar) {
    const struct {
        const char* text;
        LocalTime time;
    } cases[] = {
        {"2026-03-05T10:07:09", {2026, 3, 5, 10, 7, 9}},     {"0001-01-01T00:00:00", {1, 1, 1, 0, 0, 0}},
        {"9999-12-31T23:59:59", {9999, 12, 31, 23, 59, 59}}, {"2024-02-29T12:00:00", {2024, 2, 29, 12, 0, 0}},
        {"2000-02-29T12:00:00", {2000, 2, 29, 12, 0, 0}},
    };
    for (const auto& one : cases) {
        const auto time = parseLocalTime(one.text);
        ASSERT_TRUE(time.has_value()) << one.text;
        EXPECT_EQ(*time, one.time) << one.text;
    }
}

TEST(ParseLocalTime, RefusesEverythingElse) {
    for (const char* text : {"",
                             "2026-03-05",
                             "2026-03-05 10:07:09",
                             "2026-03-05T10:07",
                             "2026-03-05T10:07:09Z",
                             "2026-03-05T10:07:09 ",
                             " 2026-03-05T10:07:09",
                             "2026-3-5T10:07:09",
                             "2026/03/05T10:07:09",
                             "-026-03-05T10:07:09",
                             "2026-+3-05T10:07:09",
                             "0000-01-01T00:00:00",
                             "2026-00-05T10:07:09",
                             "2026-13-05T10:07:09",
                             "2026-03-00T10:07:09",
                             "2026-04-31T10:07:09",
                             "2025-02-29T10:07:09",
                             "1900-02-29T10:07:09",
                             "2026-03-05T24:07:09",
                             "2026-03-05T10:60:09",
                             "2026-03-05T10:07:60"}) {
        EXPECT_FALSE(parseLocalTime(text).has_value()) << text;
    }
}

TEST(CurrentLocalTime, IsTheInstalledOneAsLongAsThereIsOne) {
    const LocalTime fixed{2026, 3, 5, 10, 7, 9};
    installLocalTime(fixed);
    EXPECT_EQ(currentLocalTime(), fixed);
    installLocalTime(std::nullopt);
    EXPECT_NE(currentLocalTime(), fixed);
}

TEST(CurrentLocalTime, IsOtherwiseTheSystems) {
    const std::time_t before = std::time(nullptr);
    const LocalTime now = currentLocalTime();
    const std::time_t after = std::time(nullptr);
    std::tm parts{};
    parts.tm_year = now.year - 1900;
    parts.tm_mon = now.month - 1;
    parts.tm_mday = now.day;
    parts.tm_hour = now.hour;
    parts.tm_min = now.minute;
    parts.tm_sec = now.second;
    parts.tm_isdst = -1;
    const std::time_t answered = std::mktime(&parts);
    EXPECT_LE(before, answered);
    EXPECT_LE(answered, after);
}

}  // namespace
}  // namespace vexa
