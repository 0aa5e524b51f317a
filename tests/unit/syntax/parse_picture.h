// The outcome of parsing as one line of text.
#pragma once

#include <string>

#include "backend/syntax/command_spec.h"
#include "backend/syntax/descriptors.h"

namespace vexa {

/// What parsing `text` against `descriptor` gives: each subcommand as NAME{PARAMETER=tokens; ...}, each group
/// in angle brackets; or, when it is refused, "COLUMN: message".
[[nodiscard]] std::string parsed(const CommandDescriptor& descriptor, const std::string& text);

/// Tokens separated by a blank, literals in single quotes.
[[nodiscard]] std::string pictureOf(std::span<const TokenInfoObj> tokens);

}  // namespace vexa
