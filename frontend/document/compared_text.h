// Texts as they are compared wherever items are looked for.
#pragma once

#include <string>
#include <string_view>

namespace vexa::frontend {

/// `text` (UTF-8) without the blanks at both ends and folded to one case: two texts are the same to a user
/// when these are. Bytes that belong to no character stay.
[[nodiscard]] std::string comparedText(std::string_view text);

}  // namespace vexa::frontend
