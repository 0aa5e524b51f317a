#include "frontend/export/pdf/pdf_document.h"

namespace vexa::frontend {

bool canWritePdf() { return false; }

PackageResult writePdf(const ExportTask& /*task*/, const ByteSink& /*sink*/) { return {}; }

}  // namespace vexa::frontend
