// What older office documents say of themselves beside their content.
#pragma once

#include <string>
#include <string_view>

namespace vexa::frontend::biff {

/// The stream that has the title (UTF-8) of a document.
inline constexpr std::string_view propertiesStream = "\x05SummaryInformation";
[[nodiscard]] std::string documentProperties(std::string_view title);

}  // namespace vexa::frontend::biff
