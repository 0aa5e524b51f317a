#include "backend/platform/version.h"

namespace vexa {

// The build defines the macro for this file alone, so that a new version compiles nothing else anew.
std::string_view productVersion() { return VEXA_VERSION; }

}  // namespace vexa
