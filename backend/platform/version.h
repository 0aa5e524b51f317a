// Which version of the product this is.
#pragma once

#include <string_view>

namespace vexa {

/// The version, as in "1.2.3": that of the project in the topmost CMakeLists.txt. Whatever shows or writes a
/// version takes it from here.
[[nodiscard]] std::string_view productVersion();

}  // namespace vexa
