// The five entities that texts of requests are escaped with.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vexa::frontend {

/// `text` with characters for entities; nothing where an ampersand begins none of the five.
[[nodiscard]] std::optional<std::string> withoutEntities(std::string_view text);

}  // namespace vexa::frontend
