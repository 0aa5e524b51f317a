// Base64, as JSON, pages and mail carry pictures.
#pragma once

#include <string>
#include <string_view>

namespace vexa::frontend {

/// With padding, without line ends.
[[nodiscard]] std::string encodeBase64(std::string_view bytes);
/// Takes blanks and line ends anywhere, and goes without padding; false for anything else that is no base64.
[[nodiscard]] bool decodeBase64(std::string_view text, std::string& bytes);

}  // namespace vexa::frontend
