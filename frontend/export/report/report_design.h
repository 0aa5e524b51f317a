// The style and the script of a REPORT, as they stand in the page.
#pragma once

#include <string_view>

namespace vexa::frontend {

[[nodiscard]] std::string_view reportStyle();
/// Beyond `reportStyle`, where tables keep their own looks: they stand on white paper.
[[nodiscard]] std::string_view ownLooksStyle();
/// Beyond `reportStyle`, where the report dresses tables itself.
[[nodiscard]] std::string_view restyledStyle();
[[nodiscard]] std::string_view reportScript();

}  // namespace vexa::frontend
