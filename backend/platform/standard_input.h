// The process's standard input, as a whole.
#pragma once

#include <string>

#include "backend/platform/file_system.h"

namespace vexa {

/// Reads what is left of `std::cin`, to its end. Fails for what gives no bytes, such as a folder.
[[nodiscard]] FileResult readStandardInput(std::string& content);

}  // namespace vexa
