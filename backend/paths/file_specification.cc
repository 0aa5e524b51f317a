#include "backend/paths/file_specification.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "backend/paths/path_text.h"
#include "backend/platform/file_system.h"
#include "backend/text/character_set.h"

namespace vexa {

namespace {

constexpr int kExpanded = 0;
constexpr int kNotExpanded = 1;

/// Fills `buffer` with `path` if there is room for it and its final zero.
int store(const std::string& path, char* buffer) {
    if (path.size() >= static_cast<std::size_t>(kFileSpecificationCapacity)) {
        return kNotExpanded;
    }
    std::memcpy(buffer, path.c_str(), path.size() + 1);
    return kExpanded;
}

std::string withBackslashes(std::string_view path) {
    std::string result;
    result.reserve(path.size());
    while (!path.empty()) {
        const std::size_t length = segmentLength(path);
        result.append(path.substr(0, length));
        path.remove_prefix(length);
        if (path.empty()) {
            break;
        }
        result.push_back('\\');
        path.remove_prefix(1);
    }
    return result;
}

std::string wholePath(std::string_view path, const std::string& folder) {
    return resolvedPath(isWholePath(path) ? std::string(path) : joinedPath(folder, path));
}

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

FileLocations& FileLocations::current() {
    static FileLocations locations;
    return locations;
}

void FileLocations::setHandle(std::string_view name, std::string_view target) {
    handles_.insert_or_assign(toUpperCase(name), std::string(target));
}

std::string FileLocations::handle(std::string_view name) const {
    const auto found = handles_.find(toUpperCase(name));
    return found == handles_.end() ? std::string() : found->second;
}

bool FileLocations::changeFolder(std::string_view folder) {
    if (folder.empty()) {
        return false;
    }
    std::string next = wholePath(folder, this->folder());
    if (!FileSystem::current().isFolder(toUtf8(next))) {
        return false;
    }
    folder_ = std::move(next);
    return true;
}

std::string FileLocations::folder() const {
    if (!folder_.empty()) {
        return folder_;
    }
    return fromUtf8(toBackslashPath(FileSystem::current().workingFolder()));
}

void FileLocations::reset() {
    handles_.clear();
    folder_.clear();
}

int ExpandDirectoryHandle(const char* text, char* buffer, int length) {
    if (text == nullptr || length <= 0) {
        return kNotExpanded;
    }
    const std::string_view whole(text, static_cast<std::size_t>(length));
    const std::size_t name = segmentLength(whole);
    const std::string target = FileLocations::current().handle(whole.substr(0, name));
    if (target.empty()) {
        return kNotExpanded;
    }
    if (name == whole.size()) {
        return store(withBackslashes(target), buffer);
    }
    return store(withBackslashes(joinedPath(target, whole.substr(name + 1))), buffer);
}

int ExpandFileSpecification(const char* text, char* buffer) {
    if (text == nullptr || *text == '\0') {
        return kNotExpanded;
    }
    const std::string folder = FileLocations::current().folder();
    // Without a folder (the working folder was deleted) a relative name has no whole form.
    if (folder.empty() && !isWholePath(text)) {
        return kNotExpanded;
    }
    return store(wholePath(text, folder), buffer);
}

std::string withoutFinalSeparators(std::string path) {
    // From the beginning, because only so a trail byte can be told from a separator.
    std::size_t end = 1;
    for (std::size_t at = 0; at < path.size(); ++at) {
        const std::size_t length = segmentLength(std::string_view(path).substr(at));
        at += length;
        end = length > 0 ? at : end;
    }
    path.resize(std::min(end, path.size()));
    return path;
}

std::string wholeFileName(std::string name) {
    // No system has a longer name or one with a zero byte; the buffers would cut such a name to another one.
    if (name.size() >= kFileSpecificationCapacity || name.find('\0') != std::string::npos) {
        return name;
    }
    std::array<char, kFileSpecificationCapacity> buffer{};
    if (ExpandDirectoryHandle(name.c_str(), buffer.data(), static_cast<int>(name.size())) == kExpanded) {
        name = buffer.data();
    }
    if (ExpandFileSpecification(name.c_str(), buffer.data()) == kExpanded) {
        name = buffer.data();
    }
    return name;
}

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
