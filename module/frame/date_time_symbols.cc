#include "module/frame/date_time_symbols.h"

#include <cstddef>

#include "backend/paths/path_factory.h"
#include "backend/platform/clock.h"
#include "backend/strings/table_dictionary.h"
#include "backend/text/system_text.h"

namespace vexa {

namespace {

constexpr SystemText kMonthKeys[] = {"TFOJanuary"_text, "TFOFebruary"_text, "TFOMarch"_text,
                                     "TFOApril"_text,   "TFOMay"_text,      "TFOJune"_text,
                                     "TFOJuly"_text,    "TFOAugust"_text,   "TFOSeptember"_text,
                                     "TFOOctober"_text, "TFONovember"_text, "TFODecember"_text};

constexpr int kHoursOfHalfDay = 12;

std::string monthName(int month) {
    FacSTDictionary dictionary(PathFactory::getPathInstance(PathFactory::kLanguage)->getPath());
    dictionary.SetProcedure("Output Modify");
    return dictionary.LookUp(kMonthKeys[month - 1]);
}

std::string twoDigits(int number) { return (number < 10 ? "0" : "") + std::to_string(number); }

std::string joined(const std::string& first, const std::string& second, const std::string& third,
                   char between) {
    return first + between + second + between + third;
}

std::string minutesAndSeconds(const LocalTime& now) {
    return ':' + twoDigits(now.minute) + ':' + twoDigits(now.second);
}

/// 0 for midnight and for noon, and no mark of the half of the day.
std::string timeOfHalfDay(const LocalTime& now) {
    return std::to_string(now.hour % kHoursOfHalfDay) + minutesAndSeconds(now);
}

/// Every hour below 12 has a leading zero, 10 and 11 too: 010 and 011 are meant.
std::string timeOfDay(const LocalTime& now) {
    return (now.hour < kHoursOfHalfDay ? "0" : "") + std::to_string(now.hour) + minutesAndSeconds(now);
}

/// The search goes on behind each replacement.
void replaceAll(std::string& text, std::string_view symbol, const std::string& replacement) {
    std::size_t found = text.find(symbol);
    if (found == std::string::npos) {
        return;
    }
    std::string result;
    std::size_t copied = 0;
    for (; found != std::string::npos; found = text.find(symbol, copied)) {
        result.append(text, copied, found - copied).append(replacement);
        copied = found + symbol.size();
    }
    text = result.append(text, copied);
}

}  // namespace

std::string ExpandDateTimeSymbols(std::string_view text) {
    std::string expanded(text);
    if (expanded.find(')') == std::string::npos) {
        return expanded;
    }
    const LocalTime now = currentLocalTime();
    const std::string day = std::to_string(now.day);
    const std::string month = std::to_string(now.month);
    const std::string year = std::to_string(now.year);
    if (expanded.find(")DATE") != std::string::npos) {
        replaceAll(expanded, ")DATE", joined(day, monthName(now.month), year, '-'));
    }
    replaceAll(expanded, ")ADATE", joined(month, day, year, '/'));
    replaceAll(expanded, ")EDATE", joined(day, month, year, '.'));
    replaceAll(expanded, ")SDATE", joined(year, month, day, '/'));
    replaceAll(expanded, ")TIME", timeOfHalfDay(now));
    replaceAll(expanded, ")ETIME", timeOfDay(now));
    return expanded;
}

}  // namespace vexa
