// Files that commands are going to have written by the front end.
#pragma once

#include <string>
#include <string_view>

namespace vexa {

/// Looks a whole path up in the file system; nothing is made or changed. `length` becomes the bytes of the
/// path. `valid` becomes 1 when the path names a file in a folder that is there, and no folder; `exists` when
/// the file is there; `writable` when it may be written, or made when it is not there. Else they become 0.
/// Returns 0 when the path is valid and writable.
int VALIDATECLIENTFILESPEC(const char* path, int* length, int* valid, int* exists, int* writable);

}  // namespace vexa
