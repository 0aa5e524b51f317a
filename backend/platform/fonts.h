// The fonts that the system has.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vexa {

/// The families of the installed fonts, in UTF-8, in the order of their bytes, each once. The system is asked
/// once in the life of the process; where it does not answer, there are none.
[[nodiscard]] std::vector<std::string> installedFonts();

/// True for one of these families, and for serif, sans-serif and monospace, which every system has some font
/// for. Case and blanks at both ends do not count.
[[nodiscard]] bool isFontInstalled(std::string_view family);

/// Makes `families` what is installed from now on; nothing given brings those of the system back. For tests.
void installFonts(std::optional<std::vector<std::string>> families);

}  // namespace vexa
