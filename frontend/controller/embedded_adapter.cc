#include "frontend/controller/embedded_adapter.h"

namespace vexa::frontend {

std::string EmbeddedAdapter::exchangeExport(const std::string& specification) {
    return exportDocuments(controller_.documents(), specification, exportSurroundings_, choices_.carrying);
}

std::string EmbeddedAdapter::exchangeModify(const std::string& request) {
    return modifyDocuments(controller_.documents(), looks_, request, choices_.carrying);
}

}  // namespace vexa::frontend
