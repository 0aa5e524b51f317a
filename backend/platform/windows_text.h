// Texts and error codes of Windows. For the platform library's own files on that system.
#pragma once

#include <string>
#include <string_view>

#include "backend/platform/file_system.h"

namespace vexa {

/// UTF-8 as the system's own text; what cannot be read becomes U+FFFD.
[[nodiscard]] std::wstring wideText(std::string_view utf8);
/// The system's own text as UTF-8; a surrogate without its partner becomes U+FFFD.
[[nodiscard]] std::string narrowText(std::wstring_view text);

/// The failure that a code of GetLastError means, in the words that the C library's error numbers have
/// everywhere; in the system's own where it has none.
FileResult failureOf(unsigned long code);
/// The same for the error that this thread had last.
FileResult lastFailure();

}  // namespace vexa
