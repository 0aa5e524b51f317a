// Names that users give.
#pragma once

namespace vexa {

/// Non-zero when `text` is no valid name. A name begins with a letter, @ # $ or a character above 127, goes
/// on with those, digits, '.' and '_', and does not end in '.' or '_'.
[[nodiscard]] int ValidateVexaNameCheckLastChar(const char* text);

}  // namespace vexa
