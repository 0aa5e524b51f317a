// The temporary files of this process, so that none stays behind when a signal ends it.
#pragma once

#include <string>

namespace vexa {

/// From now on the file at `path` is removed when SIGINT, SIGTERM or SIGHUP ends the process, on Windows
/// Ctrl-C, Ctrl-Break, the end of the console or of the user's session. Signals that somebody handles or
/// ignores already when the first file is remembered stay with him.
void rememberTemporary(const std::string& path);
void forgetTemporary(const std::string& path);

/// Removes the files that are remembered. A handler of a signal that ends the process may call it.
void removeTemporaries();

}  // namespace vexa
