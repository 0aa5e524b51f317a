// The system's file system. For the platform library's own files.
#pragma once

#include "backend/platform/file_system.h"

namespace vexa {

/// The system's own file system; one for the process.
[[nodiscard]] FileSystem& nativeFileSystem();

}  // namespace vexa
