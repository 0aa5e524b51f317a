// The XML library and its 16-bit texts. For the viewer XML library's own files.
#pragma once

#include <string>
#include <string_view>

namespace vexa {

/// Initialises the XML library for the rest of the process, the first time it is called; others who
/// initialise and terminate it are counted apart. False when it cannot work in this process.
[[nodiscard]] bool xmlLibraryWorks();

/// UTF-8 as UTF-16 in which every character may stand in an XML document: what may not, and what is no
/// character, becomes U+FFFD.
[[nodiscard]] std::u16string xmlUnits(std::string_view utf8);

}  // namespace vexa
