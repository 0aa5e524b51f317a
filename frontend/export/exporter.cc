#include "frontend/export/exporter.h"

#include "backend/strings/dictionary.h"

namespace vexa::frontend {

std::string documentTitle(const ViewerDocument& document) {
    return document.name().empty() ? translated("Unnamed document"_text.key()) : document.name();
}

}  // namespace vexa::frontend
