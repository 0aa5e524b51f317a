// Message catalogues of the C library's gettext, as a peer for the string tables.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "backend/strings/string_table.h"

namespace vexa::bench {

/// Writes the texts of `entries` as the binary catalogue `file`, with the hash table that lookups use. The
/// texts carry no character set, so that nothing is converted when they are read. False when it cannot be
/// written.
[[nodiscard]] bool writeCatalog(const std::filesystem::path& file, const std::vector<keyValueGloss>& entries);

/// Makes gettext look texts up in the catalogues of `language`, whatever locales the system has. False when
/// it would look nothing up.
[[nodiscard]] bool chooseCatalogs(const char* language);

}  // namespace vexa::bench
