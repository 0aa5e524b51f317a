// Messages for programs: JSON lines, as docs/diagnostics.md and schemas/diagnostics.schema.json say.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vexa::program {

/// Who complains: the parser of the syntax, the same of a value that the command passes over, a command of a
/// value, a command of anything, the program, the reader of the command line.
namespace diagnostic_code {
inline constexpr std::string_view kSyntax = "syntax";
inline constexpr std::string_view kIgnoredValue = "ignored-value";
inline constexpr std::string_view kRefusedValue = "refused-value";
inline constexpr std::string_view kCommand = "command";
inline constexpr std::string_view kProgram = "program";
inline constexpr std::string_view kUsage = "usage";
}  // namespace diagnostic_code

/// Levels of messages; above an error, too.
inline constexpr int kWarningLevel = 2;
inline constexpr int kErrorLevel = 3;

struct Diagnostic {
    std::string_view code;
    int level = kErrorLevel;               ///< 1 a note, 2 a warning, 3 and above an error
    std::string file{};                    ///< empty for none
    int line = 0;                          ///< from 1; 0 for none
    int column = 0;                        ///< in characters from 1; 0 for none
    std::string text{};                    ///< as shown, in the language of the user
    std::string key{};                     ///< the text in English with its markers; empty where it has none
    std::vector<std::string> arguments{};  ///< what stands in the place of the markers
};

/// One JSON object with its line end: ASCII, every other character escaped, bytes that are no UTF-8 as
/// U+FFFD.
[[nodiscard]] std::string diagnosticLine(const Diagnostic& diagnostic);

/// What of a message says what to do: the sentences behind the first one. Ends of sentences inside
/// `arguments` and in double quotes do not count. Empty for a message of one sentence.
[[nodiscard]] std::string hintOf(std::string_view text, const std::vector<std::string>& arguments);

/// Whether messages are written in this form from now on, also those of `complain`.
void setDiagnosticsAsJson(bool chosen);
[[nodiscard]] bool areDiagnosticsJson();

}  // namespace vexa::program
