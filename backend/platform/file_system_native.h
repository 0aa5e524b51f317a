// The system's file system. For the platform library's own files.
#pragma once

#include <filesystem>
#include <string_view>

#include "backend/platform/file_system.h"

namespace vexa {

/// The system's own file system; one for the process.
[[nodiscard]] FileSystem& nativeFileSystem();

/// A path (UTF-8, either separator) for the streams of the standard library.
[[nodiscard]] std::filesystem::path streamPath(std::string_view path);

}  // namespace vexa
