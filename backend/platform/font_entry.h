// The names under which Windows keeps its fonts. For the platform library's own files.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vexa {

/// The families of an entry: "Arial Bold Italic (TrueType)" is Arial, "Cambria & Cambria Math (TrueType)" are
/// two, "Small Fonts 8,10 (VGA res)" has sizes. A name of which nothing would be left is a family as it
/// stands.
[[nodiscard]] std::vector<std::string> familiesOfFontEntry(std::string_view entry);

}  // namespace vexa
