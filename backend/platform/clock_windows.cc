#include <ctime>

#include "backend/platform/system_clock.h"

namespace vexa {

LocalTime systemLocalTime() {
    const __time64_t now = _time64(nullptr);
    // The C library keeps one result for each thread, so nobody changes it before it is read.
    const std::tm* const local = _localtime64(&now);
    if (local == nullptr) return {};
    return {local->tm_year + 1900, local->tm_mon + 1, local->tm_mday,
            local->tm_hour,        local->tm_min,     local->tm_sec};
}

}  // namespace vexa
