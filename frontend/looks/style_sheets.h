// Style sheets of charts by their name, as the folders `Looks` hold them.
#pragma once

#include <string>
#include <vector>

namespace vexa::frontend {

/// The file of the style sheet `name`, as written or in small letters, with `.css` or without, in the first
/// of the folders (UTF-8) that has it. Empty where none has it, and for a name that is a path.
[[nodiscard]] std::string styleSheetFile(const std::vector<std::string>& folders, const std::string& name);

}  // namespace vexa::frontend
