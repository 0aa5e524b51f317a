#include "backend/paths/client_file.h"

#include "backend/paths/path_text.h"
#include "backend/platform/file_system.h"
#include "backend/text/character_set.h"

namespace vexa {

namespace {

/// The folder of a whole path, with the separator at its end; empty for a name without one.
std::string_view folderOf(std::string_view path) {
    std::size_t end = 0;
    for (std::size_t at = segmentLength(path); at < path.size();
         at += 1 + segmentLength(path.substr(at + 1))) {
        end = at + 1;
    }
    return path.substr(0, end);
}

bool namesFile(std::string_view path) {
    FileSystem& files = FileSystem::current();
    const std::string_view folder = folderOf(path);
    return folder.size() < path.size() && !files.isFolder(toUtf8(path)) &&
           (folder.empty() || files.isFolder(toUtf8(folder)));
}

}  // namespace

int VALIDATECLIENTFILESPEC(const char* path, int* length, int* valid, int* exists, int* writable) {
    const std::string_view text(path);
    const std::string file = toUtf8(text);
    const bool named = namesFile(text);
    const bool open = named && FileSystem::current().isWritable(file);
    *length = static_cast<int>(text.size());
    *valid = named ? 1 : 0;
    *exists = named && FileSystem::current().isFile(file) ? 1 : 0;
    *writable = open ? 1 : 0;
    return open ? 0 : 1;
}

}  // namespace vexa
