// The text of an imported file.
#pragma once

#include <string>

#include "frontend/import/import_context.h"

namespace vexa::frontend {

/// `bytes` in the encoding of that name as UTF-8, without a byte order mark. Without a name they are UTF-8,
/// or UTF-16 where a byte order mark says so. False, with the place, where a byte belongs to no character,
/// and for an encoding that is not known.
bool readText(std::string bytes, const std::string& encoding, std::string& text, ImportProblem& problem);

/// False, with the problem, for the name of an encoding that is not known; none is known.
bool checkEncoding(const std::string& encoding, ImportProblem& problem);

/// With "\n" for every line end.
[[nodiscard]] std::string withPlainLineEnds(std::string text);
/// Without blanks, tabulators and line ends at both ends.
[[nodiscard]] std::string_view withoutBlanks(std::string_view text);
/// The offset of the first byte that belongs to no character; npos in UTF-8.
[[nodiscard]] std::size_t firstNoUtf8(std::string_view text);

}  // namespace vexa::frontend
