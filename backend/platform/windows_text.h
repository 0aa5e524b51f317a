// Texts and error codes of Windows. For the platform library's own files on that system.
#pragma once

#include <string>
#include <string_view>

namespace vexa {

/// UTF-8 as the system's own text; what cannot be read becomes U+FFFD.
[[nodiscard]] std::wstring wideText(std::string_view utf8);
/// The system's own text as UTF-8; a surrogate without its partner becomes U+FFFD.
[[nodiscard]] std::string narrowText(std::wstring_view text);

/// What a code of GetLastError means, in the words of the C library, which are the same on every system; in
/// the system's own where the C library has none.
[[nodiscard]] std::string errorText(unsigned long code);
/// The same for the error that this thread had last.
[[nodiscard]] std::string lastErrorText();

}  // namespace vexa
