#include "backend/platform/clock.h"

#include <array>
#include <cstddef>
#include <cstdio>

#include "backend/platform/system_clock.h"

namespace vexa {

namespace {

std::optional<LocalTime>& installedTime() {
    static std::optional<LocalTime> time;
    return time;
}

bool isLeapYear(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

int daysOf(int year, int month) {
    constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && isLeapYear(year) ? 29 : kDays[static_cast<std::size_t>(month - 1)];
}

bool isMoment(const LocalTime& time) {
    return time.year >= 1 && time.month >= 1 && time.month <= 12 && time.day >= 1 &&
           time.day <= daysOf(time.year, time.month) && time.hour <= 23 && time.minute <= 59 &&
           time.second <= 59;
}

/// The number that `digits` digits from `from` on write.
int numberAt(std::string_view text, std::size_t from, std::size_t digits) {
    int number = 0;
    for (const char c : text.substr(from, digits)) number = number * 10 + (c - '0');
    return number;
}

bool hasForm(std::string_view text, std::string_view pattern) {
    if (text.size() != pattern.size()) return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool digit = text[i] >= '0' && text[i] <= '9';
        if (pattern[i] == '0' ? !digit : text[i] != pattern[i]) return false;
    }
    return true;
}

}  // namespace

LocalTime currentLocalTime() { return installedTime() ? *installedTime() : systemLocalTime(); }

void installLocalTime(std::optional<LocalTime> time) { installedTime() = time; }

std::string shownTime(const LocalTime& time) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d", time.year, time.month, time.day,
                  time.hour, time.minute, time.second);
    return text.data();
}

std::optional<LocalTime> parseLocalTime(std::string_view text) {
    if (!hasForm(text, "0000-00-00T00:00:00")) return std::nullopt;
    const LocalTime time{numberAt(text, 0, 4),  numberAt(text, 5, 2),  numberAt(text, 8, 2),
                         numberAt(text, 11, 2), numberAt(text, 14, 2), numberAt(text, 17, 2)};
    if (!isMoment(time)) return std::nullopt;
    return time;
}

}  // namespace vexa
