// A whole file written by the single operations of the file system.
#pragma once

#include <string>
#include <string_view>

#include "backend/platform/file_system.h"

namespace vexa {

/// Puts `content` in the place of the file `path`; nothing stays behind on failure.
inline FileResult replaceFile(const std::string& path, std::string_view content) {
    FileSystem& files = FileSystem::current();
    std::string temporary;
    if (FileResult result = files.createTemporary(path, temporary); !result) return result;
    FileResult result = files.append(temporary, content);
    if (result) result = files.flush(temporary);
    if (result) result = files.replace(temporary, path);
    if (!result) static_cast<void>(files.remove(temporary));
    return result;
}

}  // namespace vexa
