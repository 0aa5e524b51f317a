// The languages that the user has chosen in the system's settings.
#pragma once

#include <string>
#include <vector>

namespace vexa {

/// Names of languages and regions as "de", "pt_BR" or "zh_TW", the preferred one first, without repetition;
/// empty where the system is set to none. Names from the system are taken as they stand but for their form:
/// nobody checks here that such a language exists.
[[nodiscard]] std::vector<std::string> userLanguages();

}  // namespace vexa
