// Reads an export specification, for the front end that carries it out.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "backend/viewerxml/export_spec.h"

namespace vexa {

struct ReadExportSpec {
    std::unique_ptr<ExportSpec> spec;  ///< null when the text cannot be read
    std::string error;  ///< what is wrong and where, in the back end's character set; empty beside a `spec`
};

/// Reads `text`, which `ExportXML::convertToXML` wrote: `convertToXML` makes the same of what was read. It is
/// taken as UTF-8, whatever its declaration says. Refused, with line and column, is every other form:
/// elements in another order or twice, other attributes, values that are none of theirs, a measure without
/// its unit, document types, texts above 16 MiB. Comments and processing instructions are passed over. What
/// `setDocumentFile` and its like took unescaped or with line ends comes back with blanks for these, as XML
/// has it. Initialises the XML library where nobody has. Throws nothing but for lack of memory.
[[nodiscard]] ReadExportSpec readExportSpec(std::string_view text);

}  // namespace vexa
