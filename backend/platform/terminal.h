// The terminal that the program talks to, if there is one.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace vexa {

enum class StandardStream { input = 0, output = 1, error = 2 };

[[nodiscard]] bool isTerminal(StandardStream stream);
/// Columns of the terminal behind `stream`; 0 when it is none or does not say.
[[nodiscard]] std::size_t terminalColumns(StandardStream stream);
/// True when `stream` is a terminal that obeys ANSI sequences, and the user's surroundings do not ask for
/// output without colours (NO_COLOR is set and not empty, TERM is dumb).
[[nodiscard]] bool showsColors(StandardStream stream);

/// True when `path` (UTF-8) is another name of what `stream` reads or writes, such as /dev/stdout, or the
/// file that it was redirected to. Always false on Windows.
[[nodiscard]] bool isStreamAt(StandardStream stream, const std::string& path);

/// Reads a line from standard input, which is a terminal, without its end. Nothing at the end of the input.
[[nodiscard]] std::optional<std::string> readTerminalLine();

/// Writes `prompt` to standard error and reads a line from the terminal without showing what is typed.
/// Nothing at the end of the input, or when the terminal does not let itself be silenced.
[[nodiscard]] std::optional<std::string> readSecretLine(const std::string& prompt);

}  // namespace vexa
