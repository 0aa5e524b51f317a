// The temporary files of this process, so that none stays behind when a signal ends it.
#pragma once

#include <functional>
#include <string>

namespace vexa {

/// Has `make` make the file at `path`, and gives what it says. From then on the file is removed when a signal
/// ends the process: SIGINT, SIGTERM, SIGHUP, SIGQUIT or SIGXCPU, on Windows Ctrl-C, Ctrl-Break, the end of
/// the console or of the user's session; one that comes meanwhile waits for `make`, which must not take long.
/// Once the process is ending, no file is made any more, and this does not return. Signals that somebody
/// handles or ignores already when the first file is made stay with him.
[[nodiscard]] bool makeTemporary(const std::string& path, const std::function<bool()>& make);
/// The file was removed, or has got another name.
void forgetTemporary(const std::string& path);

/// Removes the files of this process that are there. What ends the process calls it.
void removeTemporaries();

}  // namespace vexa
