// Whether there is memory, for whoever calls libraries that end the process where there is none.
#pragma once

#include <cstdint>

namespace vexa {

/// Throws `std::bad_alloc` unless so many bytes more could be had now. Takes nothing, and a microsecond or
/// two.
void requireMemory(std::uint64_t bytes);

}  // namespace vexa
