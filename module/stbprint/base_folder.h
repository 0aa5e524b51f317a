// Where the string tables of all languages stand.
#pragma once

#include <string>

namespace vexa {

/// The folder that holds a folder for each language, by the path of the current language's folder, in the
/// back end's character set. The path is cut twice, the separator and all after it dropped: at its last slash
/// or backslash, then at its last backslash. A cut that finds no separator is left out. So the path should
/// end in a separator.
[[nodiscard]] std::string baseFolder(std::string languagePath);

}  // namespace vexa
