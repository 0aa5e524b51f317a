// The string tables of the installation: XLIFF files, one a procedure and language.
//
// A table is read when it is first asked for and kept as long as the process lives; what becomes of the file
// later does not show. Keys, texts and paths are in the back end's character set.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "backend/platform/file_system.h"

namespace vexa {

/// One entry of a string table.
struct keyValueGloss {
    std::string key;
    std::string value;  ///< the text; may be empty
    std::string gloss;  ///< the help text; empty for none

    bool operator==(const keyValueGloss&) const = default;
};

/// Reads whole string tables.
class FacSTStringTable {
  public:
    /// Files above this size, in bytes, are not read.
    static constexpr std::uint64_t kLimit = std::uint64_t{4} << 20;

    /// Fills `entries` with the table in the file `path` (either separator), in the order of the file; what
    /// they held before is gone. A file that is missing, too large or broken anywhere gives no entries, and
    /// the result says why, and so does `takeStringTableComplaints`.
    FileResult GetKeysAndValues(std::string_view path, std::vector<keyValueGloss>& entries) const;
};

/// A table that is missing or cannot be read. UTF-8.
struct StringTableComplaint {
    std::string path;
    std::string reason;  ///< why it cannot be read, as shown; empty for a file that is missing
};

/// The complaints since they were last taken, in the order of the questions, each path once: about every
/// table that `FacSTStringTable::GetKeysAndValues` was asked for, and, once in the life of the process, about
/// a broken one that a dictionary looked into. A dictionary may do without a table: what it lacks is shown in
/// English.
[[nodiscard]] std::vector<StringTableComplaint> takeStringTableComplaints();

/// The string-table file of a procedure, without its folder: "outmodify.xlf" for "Output Modify". Empty for a
/// procedure that has none; procedures are compared letter by letter.
[[nodiscard]] std::string_view stringTableFile(std::string_view procedure);

/// Forgets the tables read so far, so that the next question reads the files again.
void forgetStringTables();

}  // namespace vexa
