// The file that this process writes in its place as it goes, which nothing else of it may replace.
#pragma once

#include <string>

namespace vexa {

/// From now on `isKept` is true of the file at `path` (UTF-8, either separator), by whatever name; an empty
/// path ends that.
void keepFile(const std::string& path);
[[nodiscard]] bool isKept(const std::string& path);

}  // namespace vexa
