// Cuts any bytes into tokens. The first byte chooses the character set.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <string>

#include "backend/text/character_set.h"
#include "backend/tokens/command_text.h"
#include "backend/tokens/token_sequence.h"

namespace {

constexpr const char* kCharacterSets[] = {"UTF-8", "windows-1252", "Shift_JIS", "GB18030"};

/// Stops the program when something that always holds does not.
void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    vexa::installCharacterSet(vexa::CharacterSet::find(kCharacterSets[data[0] % std::size(kCharacterSets)]));
    vexa::CommandText command;
    command.text.assign(reinterpret_cast<const char*>(data) + 1, size - 1);
    const vexa::CommandTokens tokens(command);
    std::size_t end = 0;
    for (const vexa::TokenInfoObj& token : tokens.tokens()) {
        require(token.offset() >= end && token.length() > 0);
        end = token.offset() + token.length();
        require(end <= command.text.size() && token.getString().size() <= token.length());
        require(token.isOperator() == (token.getOperatorCode() != 0));
        require(!token.isInteger() || token.getDoubleValue());
    }
    if (tokens.error()) {
        require(tokens.error()->offset < command.text.size() && !tokens.error()->message.empty());
        require(vexa::placeOf(command, tokens.error()->offset).column > 0);
    }
    return 0;
}
