// What is said wherever memory runs out.
#pragma once

#include "backend/text/system_text.h"

namespace vexa {

inline constexpr SystemText notEnoughMemory =
    "There is not enough memory for this. Close other documents or programs and try again."_text;

}  // namespace vexa
