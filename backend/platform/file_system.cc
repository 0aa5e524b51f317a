#include "backend/platform/file_system.h"

#include <algorithm>
#include <limits>

#include "backend/platform/file_system_native.h"

namespace vexa {

namespace {

FileSystem*& installed() {
    static FileSystem* fileSystem = nullptr;
    return fileSystem;
}

FileResult fillAndReplace(FileSystem& files, const std::string& temporary, const std::string& path,
                          std::string_view content) {
    if (FileResult result = files.append(temporary, content); !result) return result;
    if (FileResult result = files.flush(temporary); !result) return result;
    return files.replace(temporary, path);
}

}  // namespace

FileSystem& FileSystem::current() { return installed() != nullptr ? *installed() : nativeFileSystem(); }

void FileSystem::install(FileSystem* fileSystem) { installed() = fileSystem; }

bool FileSystem::isWritable(const std::string& path) { return !isFolder(path); }

FileResult FileSystem::readBeginning(const std::string& path, std::string& content, std::size_t count) {
    FileResult result = read(path, content, std::numeric_limits<std::uint64_t>::max());
    content.resize(std::min(content.size(), count));
    return result;
}

FileResult writeFileAtomically(const std::string& path, std::string_view content) {
    FileSystem& files = FileSystem::current();
    std::string temporary;
    if (FileResult result = files.createTemporary(path, temporary); !result) return result;
    FileResult result = fillAndReplace(files, temporary, path, content);
    // The first failure is the one that the user can act on; a second one would only hide it.
    if (!result) static_cast<void>(files.remove(temporary));
    return result;
}

std::string toBackslashPath(std::string_view path) {
    std::string result(path);
    std::replace(result.begin(), result.end(), '/', '\\');
    return result;
}

}  // namespace vexa
