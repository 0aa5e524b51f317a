// What could be written next in a command.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "backend/syntax/descriptors.h"
#include "backend/tokens/command_text.h"

namespace vexa {

struct Completion {
    std::size_t from =
        0;  ///< offset in the text where the unfinished word begins; its end when there is none
    std::vector<std::string>
        candidates;  ///< whole words that may stand there, in the order of the description
};

/// The subcommands, keywords, values and qualifiers that can stand at the end of `command`, whose last word
/// may be unfinished. None inside a literal or comment.
[[nodiscard]] Completion completeCommand(const CommandDescriptor& descriptor, const CommandText& command);

}  // namespace vexa
