#include <ctime>

#include "backend/platform/system_clock.h"

namespace vexa {

LocalTime systemLocalTime() { return systemLocalTime(_time64(nullptr)); }

LocalTime systemLocalTime(std::int64_t seconds) {
    const __time64_t moment = seconds;
    // The C library keeps one result for each thread, so nobody changes it before it is read.
    const std::tm* const local = _localtime64(&moment);
    if (local == nullptr) return {};
    return {local->tm_year + 1900, local->tm_mon + 1, local->tm_mday,
            local->tm_hour,        local->tm_min,     local->tm_sec};
}

}  // namespace vexa
