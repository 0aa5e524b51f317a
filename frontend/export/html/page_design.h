// The style and the script of HTML pages, as they stand in the page.
#pragma once

#include <string_view>

namespace vexa::frontend {

[[nodiscard]] std::string_view pageStyle();
/// The script that lets lists of layers choose what is shown, with its element.
[[nodiscard]] std::string_view layerScript();

}  // namespace vexa::frontend
