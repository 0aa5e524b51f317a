// What fonts of PostScript call the glyphs of characters.
#pragma once

#include <string>

namespace vexa::frontend {

/// "adieresis", "uni0416"; of characters beyond the first plane "u1F600".
[[nodiscard]] std::string glyphName(char32_t character);

}  // namespace vexa::frontend
