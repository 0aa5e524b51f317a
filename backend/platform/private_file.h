// Files that nobody but their owner may read.
#pragma once

#include <string>

namespace vexa {

/// Makes an empty file at `path` (UTF-8) that only its owner may read. From a file of the user's own that is
/// there already it takes the rights of others where rights are a file's own; on Windows such a file keeps
/// those that it has. Pipes and devices stay as they are. What fails is left to whoever opens the file next,
/// who finds the reason. True of a file that only its owner, who is
/// the user, may read now; on Windows of every file.
bool makePrivate(const std::string& path);

}  // namespace vexa
