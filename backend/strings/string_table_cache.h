// The string tables read so far. For the string-table library's own files.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "backend/platform/file_system.h"
#include "backend/strings/string_table.h"

namespace vexa {

/// One table, as UTF-8.
struct LoadedStringTable {
    FileResult result;
    std::vector<keyValueGloss> entries;                         ///< in the order of the file
    std::map<std::string, std::size_t, std::less<>> positions;  ///< of each key's last entry
};

/// The table in the file `path` (UTF-8): read now, or as it was when it was first read. Never null; a file
/// that cannot be read is remembered as well.
[[nodiscard]] std::shared_ptr<const LoadedStringTable> loadStringTable(const std::string& path);

void clearStringTableCache();

/// The same as `loadStringTable`, for a dictionary: complains of a file that is there and cannot be read.
[[nodiscard]] std::shared_ptr<const LoadedStringTable> loadForDictionary(const std::string& path);

}  // namespace vexa
