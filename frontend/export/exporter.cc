#include "frontend/export/exporter.h"

#include "backend/strings/dictionary.h"

namespace vexa::frontend {

std::string documentTitle(const ViewerDocument& document) {
    return document.name().empty() ? translated("Unnamed document"_text.key()) : document.name();
}

bool ExportTask::goesOn(std::size_t itemsDone) const {
    if (!surroundings.progress || surroundings.progress(itemsDone, plan.items.size())) return true;
    report.fail(ExportError::other,
                translated("The export was stopped before its end. Nothing was replaced."_text.key()));
    return false;
}

}  // namespace vexa::frontend
