#include "backend/session/swallowed_command.h"

#include <algorithm>
#include <string_view>

#include "backend/tokens/token_sequence.h"

namespace vexa {

namespace {

/// True when a token begins at `offset`: it is not in a comment, then. No literal goes over a line's end.
bool isToken(const CommandText& command, std::size_t offset) {
    const CommandTokens tokens(command);
    const auto at =
        std::partition_point(tokens.tokens().begin(), tokens.tokens().end(),
                             [offset](const TokenInfoObj& each) { return each.offset() < offset; });
    return at != tokens.tokens().end() && at->offset() == offset;
}

}  // namespace

std::optional<SwallowedCommand> findSwallowedCommand(const CommandText& command) {
    const std::string_view text = command.text;
    for (std::size_t line = text.find('\n', command.arguments); line != std::string_view::npos;
         line = text.find('\n', line + 1)) {
        const std::size_t at = std::min(text.find_first_not_of(" \t", line + 1), text.size());
        const std::optional<FoundCommand> found = findCommandName(text, at);
        // Names of one word are too likely to be something else.
        if (found && found->command->name.find(' ') != std::string_view::npos && isToken(command, at)) {
            return SwallowedCommand{found->command, at};
        }
    }
    return std::nullopt;
}

}  // namespace vexa
