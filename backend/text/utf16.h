// UTF-16 and UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace vexa {

/// UTF-16 as UTF-8; a surrogate without its partner becomes U+FFFD.
[[nodiscard]] std::string utf16ToUtf8(std::u16string_view text);
/// UTF-8 as UTF-16; what cannot be read becomes U+FFFD, and `valid`, where given, false.
[[nodiscard]] std::u16string utf8ToUtf16(std::string_view text, bool* valid = nullptr);

}  // namespace vexa
