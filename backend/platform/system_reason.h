// Why the system refused something, in words that can be translated.
#pragma once

#include <string>

namespace vexa {

/// The words for an error number of the C library: the same on every system, and a text of the string tables
/// for what happens to files. Rarer numbers have the system's own words.
[[nodiscard]] std::string systemReason(int errnoValue);

}  // namespace vexa
