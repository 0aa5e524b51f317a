#include <ctime>

#include "backend/platform/system_clock.h"

namespace vexa {

LocalTime systemLocalTime() { return systemLocalTime(std::time(nullptr)); }

LocalTime systemLocalTime(std::int64_t seconds) {
    const std::time_t moment = seconds;
    std::tm local{};
    if (localtime_r(&moment, &local) == nullptr) return {};
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

}  // namespace vexa
