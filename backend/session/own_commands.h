// The commands that the back end carries out itself. Internal to this folder.
//
// Each is described and parsed like a command of a module, but in every mode: checking a file follows its
// INSERT commands, so their folders and handles must be known then as well.
#pragma once

#include <cstddef>
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

/// The file that INSERT names.
struct InsertedFile {
    std::string path;        ///< whole, in the back end's character set
    std::size_t offset = 0;  ///< of its name in the command
};
/// Nothing after an error.
[[nodiscard]] std::optional<InsertedFile> readInsert(const TokenSequenceBase& tokens);
/// The text of ECHO (in the back end's character set); nothing after an error.
[[nodiscard]] std::optional<std::string> readEcho(const TokenSequenceBase& tokens);

}  // namespace vexa
