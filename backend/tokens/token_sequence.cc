#include "backend/tokens/token_sequence.h"

#include "backend/tokens/lexer.h"

namespace vexa {

namespace {

const CommandText& commandOrNothing() {
    static const CommandText nothing;
    const CommandText* const command = currentCommand();
    return command == nullptr ? nothing : *command;
}

}  // namespace

TokenSequenceBase::TokenSequenceBase(const CommandText& command) : command_(&command) { Lexer(*this).run(); }

VEXA_TokenSequence::VEXA_TokenSequence(bool /*current*/) : TokenSequenceBase(commandOrNothing()) {}

}  // namespace vexa
