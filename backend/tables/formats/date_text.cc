#include "backend/tables/formats/date_text.h"

#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace vexa::tables {

namespace {

/// English in every language, since files travel.
constexpr std::array<std::string_view, 12> kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

constexpr std::int64_t kSecondsOfDay = 86400;
constexpr double kFirstSecond = -62135596800.0;  ///< 0001-01-01 00:00
constexpr double kEndSecond = 253402300800.0;    ///< 10000-01-01 00:00
constexpr double kEndOfTimes = 1e15;

void appendDigits(std::string& out, unsigned number, int count) {
    std::array<char, 4> digits{};
    for (int i = count - 1; i >= 0; --i) {
        digits[static_cast<std::size_t>(i)] = static_cast<char>('0' + number % 10);
        number /= 10;
    }
    out.append(digits.data(), static_cast<std::size_t>(count));
}

void appendDay(std::string& out, std::int64_t days, FormatKind kind) {
    const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{days}}};
    const auto year = static_cast<unsigned>(static_cast<int>(date.year()));
    const auto month = static_cast<unsigned>(date.month());
    const auto day = static_cast<unsigned>(date.day());
    switch (kind) {
        case FormatKind::americanDate:
            appendDigits(out, month, 2);
            out += '/';
            appendDigits(out, day, 2);
            out += '/';
            appendDigits(out, year, 4);
            break;
        case FormatKind::europeanDate:
            appendDigits(out, day, 2);
            out += '.';
            appendDigits(out, month, 2);
            out += '.';
            appendDigits(out, year, 4);
            break;
        case FormatKind::sortableDate:
            appendDigits(out, year, 4);
            out += '/';
            appendDigits(out, month, 2);
            out += '/';
            appendDigits(out, day, 2);
            break;
        default:
            appendDigits(out, day, 2);
            out += '-';
            out += kMonths[month - 1];
            out += '-';
            appendDigits(out, year, 4);
    }
}

/// `seconds` from 0 on.
void appendTime(std::string& out, std::int64_t seconds) {
    const std::int64_t hours = seconds / 3600;
    if (hours < 10) out += '0';
    out += std::to_string(hours);
    out += ':';
    appendDigits(out, static_cast<unsigned>(seconds / 60 % 60), 2);
    out += ':';
    appendDigits(out, static_cast<unsigned>(seconds % 60), 2);
}

/// Takes what `parse` needs from the beginning of a text.
class Scanner {
  public:
    explicit Scanner(std::string_view text) : rest_(text) {}

    [[nodiscard]] bool atEnd() const { return rest_.empty(); }
    [[nodiscard]] bool take(char character) {
        if (rest_.empty() || rest_.front() != character) return false;
        rest_.remove_prefix(1);
        return true;
    }
    /// One to `most` digits; -1 for none, or more.
    [[nodiscard]] std::int64_t number(std::size_t most) {
        std::size_t length = 0;
        std::int64_t value = 0;
        while (length < rest_.size() && rest_[length] >= '0' && rest_[length] <= '9') {
            if (length == most) return -1;
            value = value * 10 + (rest_[length++] - '0');
        }
        rest_.remove_prefix(length);
        return length == 0 ? -1 : value;
    }
    /// The number of the English month, in any case; -1 for none.
    [[nodiscard]] std::int64_t month() {
        constexpr unsigned char kCase = 0x20;
        for (std::size_t month = 0; month < kMonths.size() && rest_.size() >= 3; ++month) {
            bool same = true;
            for (std::size_t i = 0; i < 3; ++i) {
                same = same && (static_cast<unsigned char>(rest_[i]) | kCase) ==
                                   (static_cast<unsigned char>(kMonths[month][i]) | kCase);
            }
            if (!same) continue;
            rest_.remove_prefix(3);
            return static_cast<std::int64_t>(month) + 1;
        }
        return -1;
    }

  private:
    std::string_view rest_;
};

struct Day {
    std::int64_t year = -1;
    std::int64_t month = -1;
    std::int64_t day = -1;
};

/// The three numbers of a date; -1 for what is missing.
Day takeDay(Scanner& text, FormatKind kind) {
    Day result;
    switch (kind) {
        case FormatKind::americanDate:
            result.month = text.number(2);
            if (text.take('/')) result.day = text.number(2);
            if (text.take('/')) result.year = text.number(4);
            break;
        case FormatKind::europeanDate:
            result.day = text.number(2);
            if (text.take('.')) result.month = text.number(2);
            if (text.take('.')) result.year = text.number(4);
            break;
        case FormatKind::sortableDate:
            result.year = text.number(4);
            if (text.take('/')) result.month = text.number(2);
            if (text.take('/')) result.day = text.number(2);
            break;
        default:
            result.day = text.number(2);
            if (text.take('-')) result.month = text.month();
            if (text.take('-')) result.year = text.number(4);
    }
    return result;
}

/// Seconds up to the beginning of the day; nothing where the calendar has no such day.
std::optional<double> secondsOf(const Day& day) {
    if (day.year < 1 || day.month < 1 || day.day < 1) return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year(static_cast<int>(day.year)),
                                           std::chrono::month(static_cast<unsigned>(day.month)),
                                           std::chrono::day(static_cast<unsigned>(day.day))};
    if (!date.ok()) return std::nullopt;
    return static_cast<double>(std::chrono::sys_days(date).time_since_epoch().count() * kSecondsOfDay);
}

/// Seconds of `hours:mm:ss`, with at most `hourDigits` digits of the hours.
std::optional<double> takeTime(Scanner& text, std::size_t hourDigits) {
    const std::int64_t hours = text.number(hourDigits);
    const std::int64_t minutes = text.take(':') ? text.number(2) : -1;
    const std::int64_t seconds = text.take(':') ? text.number(2) : -1;
    if (hours < 0 || minutes < 0 || seconds < 0 || minutes > 59 || seconds > 59) return std::nullopt;
    return static_cast<double>(hours * 3600 + minutes * 60 + seconds);
}

}  // namespace

bool appendSeconds(std::string& out, double seconds, FormatKind kind) {
    if (kind == FormatKind::time) {
        if (std::abs(seconds) >= kEndOfTimes) return false;
        const auto whole =
            static_cast<std::int64_t>(seconds);  // cuts towards zero, so a length keeps its form
        if (whole < 0) out += '-';
        appendTime(out, whole < 0 ? -whole : whole);
        return true;
    }
    if (!(seconds >= kFirstSecond && seconds < kEndSecond)) return false;
    const auto whole = static_cast<std::int64_t>(std::floor(seconds));
    const std::int64_t ofDay = ((whole % kSecondsOfDay) + kSecondsOfDay) % kSecondsOfDay;
    appendDay(out, (whole - ofDay) / kSecondsOfDay, kind);
    if (kind == FormatKind::dateTime) {
        out += ' ';
        appendTime(out, ofDay);
    }
    return true;
}

std::optional<double> parseSeconds(std::string_view text, FormatKind kind) {
    constexpr std::size_t kMostHourDigits = 12;
    Scanner scanner(text);
    if (kind == FormatKind::time) {
        const bool negative = scanner.take('-');
        const std::optional<double> seconds = takeTime(scanner, kMostHourDigits);
        if (!seconds || !scanner.atEnd()) return std::nullopt;
        return negative ? 0 - *seconds : *seconds;
    }
    std::optional<double> seconds = secondsOf(takeDay(scanner, kind));
    if (seconds && kind == FormatKind::dateTime) {
        const std::optional<double> time = scanner.take(' ') ? takeTime(scanner, 2) : std::nullopt;
        if (!time || *time >= static_cast<double>(kSecondsOfDay)) return std::nullopt;
        *seconds += *time;
    }
    if (!scanner.atEnd()) return std::nullopt;
    return seconds;
}

}  // namespace vexa::tables
