// One command to export: a document into every format that is asked for, all of it or nothing.
#pragma once

#include <string>
#include <vector>

#include "backend/viewerxml/response_spec.h"
#include "frontend/document/viewer_document.h"
#include "frontend/export/exporter.h"
#include "frontend/requests/export_request.h"

namespace vexa::frontend {

struct ExportOutcome {
    ExportResponse response;  ///< texts in the back end's character set
    /// What the answer has no code for, as shown, UTF-8: level 2.
    std::vector<std::string> warnings;
    std::string reason;  ///< of a failure, where the answer's code does not say all; as shown, UTF-8
};

/// Exports the document. Files take their places together at the end, the document's last; after a failure
/// every place is as it was.
[[nodiscard]] ExportOutcome exportDocument(const ViewerDocument& document, const ExportRequest& request,
                                           const ExportSurroundings& surroundings);

/// The answer to an export that cannot begin. `name` is that of the document, UTF-8.
[[nodiscard]] ExportOutcome refusedExport(ExportError error, const std::string& name,
                                          std::string reason = {});

}  // namespace vexa::frontend
