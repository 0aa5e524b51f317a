// The string tables of the product, as STB PRINT goes through them.
#pragma once

#include <array>
#include <string_view>

namespace vexa {

/// The languages, in the order of the columns.
inline constexpr std::array<std::string_view, 12> kLanguages = {
    "de", "en", "es", "fr", "it", "ja", "ko", "pl", "pt_BR", "ru", "zh_CN", "zh_TW",
};

/// The file names, one a procedure of the product, in the order of printing. Most belong to procedures of
/// other modules, whose tables need not be installed.
extern const std::array<std::string_view, 94> kStringTableFiles;

}  // namespace vexa
