#include "backend/platform/system_languages.h"

namespace vexa {

std::vector<std::string> systemLanguages() { return {}; }

}  // namespace vexa
