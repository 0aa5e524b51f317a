#include "apps/vexa/adapter_stack.h"

#include <cstdint>

#include "apps/vexa/embedded_front_end.h"
#include "apps/vexa/plain_adapters.h"
#include "backend/platform/file_system.h"
#include "backend/strings/dictionary.h"

namespace vexa::program {

namespace {

constexpr std::uint64_t kMostBytesOfAPipe = std::uint64_t{1} << 30U;

std::unique_ptr<ClientAdapter> scriptedAdapter(const SessionChoices& choices, std::string& problem) {
    std::string content;
    const FileResult result =
        FileSystem::current().readStream(choices.answersFile, content, kMostBytesOfAPipe);
    if (!result) {
        problem = composed("The answers file ^1 cannot be read: ^2."_text,
                           {choices.answersFile, shownReason(result)});
        return nullptr;
    }
    std::optional<ScriptedAnswers> answers = readScriptedAnswers(content, choices.answersFile, problem);
    return answers ? std::make_unique<ScriptedAdapter>(std::move(*answers), choices.localMode) : nullptr;
}

}  // namespace

std::unique_ptr<AdapterStack> AdapterStack::make(const SessionChoices& choices, TerminalListener& terminal,
                                                 JsonLines* trace, std::string& problem) {
    std::unique_ptr<AdapterStack> stack(new AdapterStack);
    switch (choices.adapter) {
        case AdapterKind::embedded: {
            EmbeddedFrontEnd embedded = makeEmbeddedFrontEnd(choices, terminal);
            stack->adapter_ = std::move(embedded.adapter);
            stack->recorder_ = std::move(embedded.recorder);
            stack->documents_ = embedded.documents;
            break;
        }
        case AdapterKind::none:
            break;
        case AdapterKind::noController:
            stack->adapter_ = std::make_unique<NoControllerAdapter>(choices.localMode);
            break;
        case AdapterKind::script:
            stack->adapter_ = scriptedAdapter(choices, problem);
            if (stack->adapter_ == nullptr) {
                return nullptr;
            }
            break;
    }
    stack->install(trace);
    return stack;
}

void AdapterStack::install(JsonLines* trace) {
    if (recorder_ != nullptr) {
        OutputLog::current().addListener(*recorder_);
    }
    if (adapter_ != nullptr && trace != nullptr) {
        tracing_.emplace(*adapter_, *trace);
        installAdapter(&*tracing_);
    } else {
        installAdapter(adapter_.get());
    }
}

AdapterStack::~AdapterStack() {
    installAdapter(nullptr);
    if (recorder_ != nullptr) {
        OutputLog::current().removeListener(*recorder_);
    }
}

}  // namespace vexa::program
