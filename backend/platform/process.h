// What the process is given when it begins.
#pragma once

#include <string>
#include <vector>

namespace vexa {

/// Makes the process's standard streams what the program expects them to be. To be called first of all.
///
/// Streams that are closed get nothing in their place, so that no file that is opened later takes it and
/// receives what was meant for them; writing to a standard output that was closed fails. A pipe whose reader
/// has gone fails as well and ends nothing, and so does a file that is at the limit of the shell. Bytes pass
/// through as they are, and terminals are told that text is UTF-8. What several libraries of the process
/// write to standard output stands in the order in which they wrote it.
void prepareStandardStreams();

/// Whether writing to standard output failed because it is a pipe whose reader has gone. To be asked after it
/// failed: Windows does not tell before.
[[nodiscard]] bool hasOutputLostItsReader();

/// The words of the command line in UTF-8, the program's own name first; `argc` and `argv` are those of
/// `main`.
[[nodiscard]] std::vector<std::string> commandLineWords(int argc, const char* const* argv);

}  // namespace vexa
