// References to files in values that commands take.
#pragma once

#include <string>
#include <string_view>

namespace vexa {

/// The whole path, with backslashes, that `reference` means, in the back end's character set; nothing is
/// looked up. `resolve`: a file handle that the reference is or begins with is resolved, and a relative name
/// is taken from the back end's folder. `file`: the reference names a file, so separators at its end are
/// dropped; without it they stay, for the beginning of several files' names.
[[nodiscard]] std::string CheckFileRef(std::string_view reference, bool resolve, bool file);

}  // namespace vexa
