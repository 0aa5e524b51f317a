// The commands that the back end carries out itself. Internal to this folder.
//
// Each is described and parsed like a command of a module, but in every mode: checking a file follows its
// INSERT commands, so their folders and handles must be known then as well.
#pragma once

#include <optional>
#include <string>

#include "backend/session/command_catalog.h"
#include "backend/syntax/descriptors.h"
#include "backend/tokens/token_sequence.h"

namespace vexa {

/// The grammar of one of them.
[[nodiscard]] CommandDescriptor describeOwnCommand(OwnCommand own);

/// FILE HANDLE and CD do their work in `FileLocations::current()`; what is wrong goes into the log.
void runFileHandle(const TokenSequenceBase& tokens);
void runChangeFolder(const TokenSequenceBase& tokens);

/// The whole path (in the back end's character set) of the file that INSERT names; nothing after an error.
[[nodiscard]] std::optional<std::string> readInsert(const TokenSequenceBase& tokens);
/// The text of ECHO (in the back end's character set); nothing after an error.
[[nodiscard]] std::optional<std::string> readEcho(const TokenSequenceBase& tokens);

}  // namespace vexa
