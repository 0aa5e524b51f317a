#include "frontend/controller/embedded_adapter.h"

#include "frontend/controller/messages.h"

namespace vexa::frontend {

std::string EmbeddedAdapter::exchangeExport(const std::string& /*specification*/) { return {}; }

std::string EmbeddedAdapter::exchangeModify(const std::string& /*request*/) {
    return messages::modificationMissing;
}

}  // namespace vexa::frontend
