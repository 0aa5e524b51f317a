#include "frontend/controller/embedded_adapter.h"

#include "backend/pivot/bp_text.h"
#include "frontend/controller/messages.h"

namespace vexa::frontend {

std::string EmbeddedAdapter::exchangeExport(const std::string& /*specification*/) { return {}; }

std::string EmbeddedAdapter::exchangeModify(const std::string& /*request*/) {
    constexpr BpErrorShow kShow = 2;
    constexpr BpErrorLevel kWarning = 2;
    // The command reads the counts of the reply and nothing else, so whoever waits for a change is told here.
    BpError(BpString(messages::nothingModified, 1), kShow, kWarning);
    return messages::modificationMissing;
}

}  // namespace vexa::frontend
