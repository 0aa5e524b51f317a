// The string tables of the product, as STB PRINT goes through them: which they are, and where they stand.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace vexa {

/// The languages, in the order of the columns.
inline constexpr std::array<std::string_view, 12> kLanguages = {
    "de", "en", "es", "fr", "it", "ja", "ko", "pl", "pt_BR", "ru", "zh_CN", "zh_TW",
};

/// The file names, one a procedure of the product, in the order of printing. Most belong to procedures of
/// other modules, whose tables need not be installed.
extern const std::array<std::string_view, 94> kStringTableFiles;

/// The folder that holds a folder for each language, by the path of the current language's folder, in the
/// back end's character set. The path is cut twice, the separator and all after it dropped: at its last slash
/// or backslash, then at its last backslash. A cut that finds no separator is left out. So the path should
/// end in a separator.
[[nodiscard]] std::string baseFolder(std::string languagePath);

/// Whether `part`, a file or a language as a user names it, in the back end's character set, would lead out
/// of the folder that it stands in: it begins at a root or a drive, or has a part "..".
[[nodiscard]] bool leadsOutside(std::string_view part);

}  // namespace vexa
