// Characters that look like what the command language knows and are something else: what word processors,
// web pages and input methods put in the place of blanks, quotes, dashes and signs.
#pragma once

#include <string_view>

namespace vexa {

struct LookAlike {
    char32_t code;
    std::string_view name;   ///< as Unicode has it: "NO-BREAK SPACE"
    std::string_view plain;  ///< the character that it looks like; empty for one that nobody sees
};

/// What is known of `code`, or null for any other character.
[[nodiscard]] const LookAlike* findLookAlike(char32_t code);

}  // namespace vexa
