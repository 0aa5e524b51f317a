// Reads the front end's answer to an export. For the viewer XML library's own files.
#pragma once

#include <string>
#include <string_view>

#include "backend/viewerxml/response_spec.h"

namespace vexa {

/// Fills `response`, which must be as made, from `answer`. Returns an empty text, or what is wrong and where,
/// in the back end's character set; `response` is then as made.
[[nodiscard]] std::string readExportResponse(std::string_view answer, ExportResponse& response);

}  // namespace vexa
