// PDF by the library that is loaded for everything that draws.

#include "backend/strings/dictionary.h"
#include "frontend/drawing/drawing_library.h"
#include "frontend/export/pdf/pdf_document.h"

namespace vexa::frontend {

bool canWritePdf() { return isDrawingInstalled(); }

PackageResult writePdf(const ExportTask& task, const ByteSink& sink) {
    using Write = void (*)(const ExportTask&, const ByteSink&, PackageResult&);
    PackageResult result;
    if (const auto write = reinterpret_cast<Write>(drawingFunction("vexaWritePdf")); write != nullptr) {
        write(task, sink, result);
    } else {
        task.report.fail(ExportError::other,
                         composed("The library ^1, which draws, cannot be loaded."_text, {"vexadrawing.so"}));
    }
    return result;
}

}  // namespace vexa::frontend
