// Columns of characters, for systems that do not tell them.
#pragma once

namespace vexa {

/// What `letterWidth` answers, from a table.
[[nodiscard]] int letterWidthByTable(char32_t code);

}  // namespace vexa
