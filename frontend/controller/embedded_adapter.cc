#include "frontend/controller/embedded_adapter.h"

#include "backend/pivot/bp_text.h"
#include "frontend/controller/messages.h"

namespace vexa::frontend {

namespace {

void warn(SystemText message) {
    constexpr BpErrorShow kShow = 2;
    constexpr BpErrorLevel kWarning = 2;
    constexpr int kTranslatable = 1;
    BpError(BpString(message, kTranslatable), kShow, kWarning);
}

}  // namespace

std::string EmbeddedAdapter::exchangeExport(const std::string& /*specification*/) {
    warn(messages::nothingExported);
    return {};
}

std::string EmbeddedAdapter::exchangeModify(const std::string& /*request*/) {
    // The command reads the counts of the reply and nothing else, so whoever waits for a change is told here.
    warn(messages::nothingModified);
    return messages::modificationMissing;
}

}  // namespace vexa::frontend
