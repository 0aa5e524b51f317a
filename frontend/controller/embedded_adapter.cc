#include "frontend/controller/embedded_adapter.h"

#include "frontend/controller/log_messages.h"
#include "frontend/controller/messages.h"

namespace vexa::frontend {

std::string EmbeddedAdapter::exchangeExport(const std::string& /*specification*/) {
    say(warningLevel, messages::nothingExported);
    return {};
}

std::string EmbeddedAdapter::exchangeModify(const std::string& request) {
    return modifyDocuments(controller_.documents(), looks_, request, choices_.carrying);
}

}  // namespace vexa::frontend
