// Text from outside, made fit for a cell.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vexa::rendering {

/// The text with its line ends as line feeds, and every other control character visible.
[[nodiscard]] std::string safeText(std::string_view text);

/// Columns of the longest line of a safe text.
[[nodiscard]] std::size_t naturalWidth(std::string_view text);

}  // namespace vexa::rendering
