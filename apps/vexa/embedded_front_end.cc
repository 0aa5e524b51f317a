#include "apps/vexa/embedded_front_end.h"

#include <string>
#include <utility>

#include "backend/strings/dictionary.h"
#include "frontend/controller/document_recorder.h"
#include "frontend/controller/embedded_adapter.h"

namespace vexa::program {

namespace {

constexpr int kWarningLevel = 2;

}  // namespace

EmbeddedFrontEnd makeEmbeddedFrontEnd(const SessionChoices& choices, TerminalListener& terminal) {
    auto adapter = std::make_unique<frontend::EmbeddedAdapter>(choices.localMode);
    const auto reportLocked = [&terminal](const std::string& name) {
        terminal.showMessage(
            kWarningLevel, composed("The output document ^1 is locked and takes no output; what comes now is "
                                    "shown here alone. OUTPUT SAVE with LOCK=NO unlocks it."_text,
                                    {name}));
    };
    auto recorder = std::make_unique<frontend::DocumentRecorder>(
        adapter->documents(), reportLocked,
        choices.recordAll ? frontend::Recording::all : frontend::Recording::output);
    return {std::move(adapter), std::move(recorder)};
}

}  // namespace vexa::program
