// The languages of the system's own settings. For the platform library's own files.
#pragma once

#include <string>
#include <vector>

namespace vexa {

/// As `userLanguages`, for a user whose environment names no locale; empty on systems that keep such settings
/// in the environment only.
[[nodiscard]] std::vector<std::string> systemLanguages();

}  // namespace vexa
