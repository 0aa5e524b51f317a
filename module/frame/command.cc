#include "module/frame/command.h"

#include "backend/pivot/output_log.h"
#include "backend/syntax/universal_parser.h"
#include "module/frame/report.h"

namespace vexa {

namespace {

constexpr int kProcedureValue = 2;

OutputController* findController() {
    ClientAdapter* const adapter = GetAdapter();
    return adapter == nullptr ? nullptr : adapter->outputController();
}

std::optional<ParserMessage> makeMessages(const CommandIdentity& identity) {
    std::optional<ParserMessage> messages;
    if (!identity.parserTitle.empty()) {
        messages.emplace();
        messages->SetCommandName(identity.name);
        messages->SetProcedureTitle(identity.parserTitle);
    }
    return messages;
}

CommandDescriptor makeDescriptor(const CommandIdentity& identity, GrammarTable grammar) {
    CommandDescriptor descriptor(identity.name, identity.procedureTitle);
    describe(descriptor, grammar);
    return descriptor;
}

}  // namespace

Command::Command(const CommandIdentity& identity, GrammarTable grammar)
    : Command(identity, grammar, AsksFor::nothing) {}

Command::Command(const CommandIdentity& identity, GrammarTable grammar, AsksFor asked)
    : name_(identity.name),
      procedure_(identity.procedureTitle, kProcedureValue),
      needsController_(asked == AsksFor::outputController),
      controller_(needsController_ ? findController() : nullptr),
      messages_(makeMessages(identity)),
      descriptor_(makeDescriptor(identity, grammar)),
      tokens_(true) {}

bool Command::parse() {
    const int result = UniversalParser(tokens_, spec_, descriptor_).getCommandSpecifications();
    BP_FLUSHLOG();
    if (result != 0) {
        return false;
    }
    if (needsController_ && controller_ == nullptr) {
        reportNotImplemented(name_);
        return false;
    }
    return true;
}

}  // namespace vexa
