#include "backend/session/swallowed_command.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <string_view>

#include "backend/text/character_set.h"
#include "backend/tokens/token_sequence.h"

namespace vexa {

namespace {

/// True when what is named at `offset` stands there as a command would. A name of two words does wherever a
/// token begins: it is not in a comment, then, and no literal goes over a line's end. One of one word is more
/// likely to be something else, so it must stand where no value is awaited, with what it takes behind it.
bool standsAsCommand(const CommandText& command, const FoundCommand& found, std::size_t offset) {
    const CommandTokens tokens(command);
    const std::span<const TokenInfoObj> all = tokens.tokens();
    const auto at = std::partition_point(
        all.begin(), all.end(), [offset](const TokenInfoObj& each) { return each.offset() < offset; });
    if (at == all.end() || at->offset() != offset) return false;
    if (found.command->name.find(' ') != std::string_view::npos) return true;
    if (at == all.begin() || std::prev(at)->isOperator() || std::next(at) == all.end()) return false;
    const TokenInfoObj& behind = *std::next(at);
    return behind.isLiteral() ||
           (found.command->own == OwnCommand::insert && equalsIgnoringCase(behind.getString(), "FILE"));
}

}  // namespace

std::optional<SwallowedCommand> findSwallowedCommand(const CommandText& command) {
    const std::string_view text = command.text;
    for (std::size_t line = text.find('\n', command.arguments); line != std::string_view::npos;
         line = text.find('\n', line + 1)) {
        const std::size_t at = std::min(text.find_first_not_of(" \t", line + 1), text.size());
        const std::optional<FoundCommand> found = findCommandName(text, at);
        if (found && standsAsCommand(command, *found, at)) {
            return SwallowedCommand{found->command, at};
        }
    }
    return std::nullopt;
}

}  // namespace vexa
