// The system's clock. For the platform library's own files.
#pragma once

#include "backend/platform/clock.h"

namespace vexa {

/// The present moment in the system's time zone; the default `LocalTime` when the system cannot tell.
[[nodiscard]] LocalTime systemLocalTime();

}  // namespace vexa
