#include "backend/platform/file_system.h"

#include <algorithm>
#include <limits>

#include "backend/platform/file_system_native.h"

namespace vexa {

namespace {

FileSystem*& installedSystem() {
    static FileSystem* fileSystem = nullptr;
    return fileSystem;
}

}  // namespace

FileSystem& FileSystem::current() {
    return installedSystem() != nullptr ? *installedSystem() : nativeFileSystem();
}

void FileSystem::install(FileSystem* fileSystem) { installedSystem() = fileSystem; }

std::optional<FileState> FileSystem::state(const std::string& /*path*/) { return std::nullopt; }

bool FileSystem::isWritable(const std::string& path) { return !isFolder(path); }

bool FileSystem::isSameFile(const std::string& one, const std::string& other) {
    return canonicalPath(one) == canonicalPath(other);
}

FileResult FileSystem::readBeginning(const std::string& path, std::string& content, std::size_t count) {
    FileResult result = read(path, content, std::numeric_limits<std::uint64_t>::max());
    content.resize(std::min(content.size(), count));
    return result;
}

std::string toBackslashPath(std::string_view path) {
    std::string result(path);
    std::replace(result.begin(), result.end(), '/', '\\');
    return result;
}

}  // namespace vexa
