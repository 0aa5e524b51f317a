// Table looks and chart templates: finding their files and taking out what goes into a request.
#pragma once

#include <string>
#include <string_view>

namespace vexa {

/// Finds the file `name`: by itself, or with `extension` in the folder Looks of the language or of the
/// installation, in this order. True when it was found; `name` is then what to fetch. An empty extension
/// finds every name. An empty file is not found.
[[nodiscard]] bool FindTableLook(std::string& name, std::string_view extension);

/// The content of the file `name` from the first `root` on, all of it where there is none; empty when it
/// cannot be read. So an XML declaration before the root element is left out.
[[nodiscard]] std::string fetchFromRoot(const std::string& name, std::string_view root);

}  // namespace vexa
