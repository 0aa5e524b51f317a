// The fonts of the system. For the platform library's own files.
#pragma once

#include <string>
#include <vector>

namespace vexa {

/// The families of the fonts, in UTF-8, in any order and with repetitions. Asks the system each time.
[[nodiscard]] std::vector<std::string> systemFonts();

}  // namespace vexa
