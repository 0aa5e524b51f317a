// Finds commands that a missing period has made a part of the command before. Internal to this folder.
#pragma once

#include <cstddef>
#include <optional>

#include "backend/session/command_catalog.h"
#include "backend/tokens/command_text.h"

namespace vexa {

/// What looks like a command of its own within another.
struct SwallowedCommand {
    const KnownCommand* command;
    std::size_t offset;  ///< of its name in the text
};

/// The first line behind the first one of `command` that begins with a command's name, outside of comments.
/// Names of one word count where nothing else can be meant.
[[nodiscard]] std::optional<SwallowedCommand> findSwallowedCommand(const CommandText& command);

}  // namespace vexa
