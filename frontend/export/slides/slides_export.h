// The export as slides: a presentation of Office Open XML, a slide an item.
#pragma once

#include "frontend/export/exporter.h"
#include "frontend/package/package_result.h"

namespace vexa::frontend {

/// Writes the items of the plan as `task.request.ppt`, which must be there, asks for it. The sink gets the
/// bytes of the file; its failure is the result, everything else goes to the report.
PackageResult writeSlides(const ExportTask& task, ByteSink sink);

}  // namespace vexa::frontend
