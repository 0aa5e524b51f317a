// Exports: what a specification asks of the open documents, and what the log says of it.
#pragma once

#include <string>
#include <string_view>

#include "frontend/controller/carrying.h"
#include "frontend/controller/open_documents.h"
#include "frontend/export/exporter.h"

namespace vexa::frontend {

/// Exports the document that `specification` (docs/formats/export-specification.md) names and returns the
/// answer (docs/formats/export-response.md). What that has no code for goes to the log, as far as the
/// specification wants to hear of it. In a dry run everything is made and nothing put in its place.
[[nodiscard]] std::string exportDocuments(const OpenDocuments& documents, std::string_view specification,
                                          const ExportSurroundings& surroundings, Carrying carrying);

}  // namespace vexa::frontend
