// The system's clock. For the platform library's own files.
#pragma once

#include <cstdint>

#include "backend/platform/clock.h"

namespace vexa {

/// The present moment in the system's time zone; the default `LocalTime` when the system cannot tell.
[[nodiscard]] LocalTime systemLocalTime();
/// The same of the moment so many seconds after the beginning of 1970 in universal time.
[[nodiscard]] LocalTime systemLocalTime(std::int64_t seconds);

}  // namespace vexa
