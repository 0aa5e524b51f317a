// Writes the front end's answer to an export.
#pragma once

#include <string>

#include "backend/viewerxml/response_spec.h"

namespace vexa {

/// `response` as XML, in UTF-8, without an XML declaration and line ends of its own. Texts that are empty, an
/// image count that is not present, and codes without warnings are left out. `ResponseSpec` reads the same
/// from it, but for characters that XML cannot hold, which are written as U+FFFD. Empty only when the XML
/// library cannot work in this process.
[[nodiscard]] std::string writeExportResponse(const ExportResponse& response);

}  // namespace vexa
