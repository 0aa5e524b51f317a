// Writes a modification in the form that the module gives it, so that what was read can be compared with it.
#pragma once

#include <string>

#include "frontend/requests/modify_request.h"

namespace vexa::frontend {

/// The text of `request`. Exceptions stand in the order of the types, comparisons without blanks.
[[nodiscard]] std::string writeModifyRequest(const ModifyRequest& request);

}  // namespace vexa::frontend
