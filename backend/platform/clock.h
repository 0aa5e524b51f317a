// The clock that commands see.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vexa {

/// A moment of the local calendar.
struct LocalTime {
    int year = 1970;  ///< calendar year
    int month = 1;    ///< 1 to 12
    int day = 1;
    int hour = 0;  ///< 0 to 23
    int minute = 0;
    int second = 0;

    bool operator==(const LocalTime&) const = default;
};

/// The current local time, or the one that was installed.
[[nodiscard]] LocalTime currentLocalTime();
/// Makes `time` what `currentLocalTime` answers from now on; nothing gives the system's clock back.
void installLocalTime(std::optional<LocalTime> time);
/// `2026-03-05 10:07:09`.
[[nodiscard]] std::string shownTime(const LocalTime& time);
/// Reads `2026-03-05T10:07:09`; nothing when the text is no such time or no day of the calendar.
[[nodiscard]] std::optional<LocalTime> parseLocalTime(std::string_view text);

}  // namespace vexa
