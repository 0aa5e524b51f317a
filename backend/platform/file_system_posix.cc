#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include "backend/platform/file_system_native.h"
#include "backend/platform/system_clock.h"
#include "backend/platform/system_reason.h"
#include "backend/platform/temporary_files.h"
#include "backend/text/system_text.h"

namespace vexa {

namespace {

FileResult failed(int code) { return {false, systemReason(code)}; }
FileResult failed(std::string reason) { return {false, std::move(reason)}; }

/// An open file, closed with it.
class Descriptor {
  public:
    Descriptor(const std::string& path, int flags, mode_t mode = 0)
        : number_(open(path.c_str(), flags | O_CLOEXEC, mode)) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (isOpen()) close(number_);
    }

    [[nodiscard]] bool isOpen() const { return number_ >= 0; }
    [[nodiscard]] int number() const { return number_; }
    /// Some systems report a write that failed only here.
    FileResult closeNow() {
        const int number = number_;
        number_ = -1;
        if (close(number) != 0 && errno != EINTR) return failed(errno);
        return {};
    }

  private:
    int number_;
};

FileResult tooLarge(std::uint64_t limit) {
    constexpr SystemText kReason = "The file is larger than ^1 bytes"_text;
    return {false, std::string(kReason), {std::to_string(limit)}};
}

/// What keeps a path from being read or replaced as a file; empty when nothing does.
std::string refusal(const struct stat& status) {
    if (S_ISDIR(status.st_mode)) return systemReason(EISDIR);
    if (!S_ISREG(status.st_mode)) return std::string("Not a file but a device or a pipe"_text);
    return {};
}

/// The folder part of a native path, "." when it has none.
std::string folderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

/// Follows `path` through symbolic links to what they name in the end, whether or not that exists.
FileResult followLinks(std::string& path) {
    constexpr int kMostLinks = 40;
    for (int i = 0; i < kMostLinks; ++i) {
        struct stat status {};
        if (lstat(path.c_str(), &status) != 0) return errno == ENOENT ? FileResult{} : failed(errno);
        if (!S_ISLNK(status.st_mode)) return {};
        std::error_code code;
        const std::filesystem::path target = std::filesystem::read_symlink(path, code);
        if (code) return failed(code.value());
        path = target.is_absolute() ? target.string() : folderOf(path) + '/' + target.string();
    }
    return failed(ELOOP);
}

/// What a file that takes the place of another one inherits.
struct Predecessor {
    std::string path;
    uid_t owner = 0;
    gid_t group = 0;
    mode_t rights = 0;
};

/// The file at `path`, nothing when there is no such file; fails when it must not be replaced.
FileResult lookAtTarget(const std::string& path, std::optional<Predecessor>& target) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return errno == ENOENT ? FileResult{} : failed(errno);
    if (std::string reason = refusal(status); !reason.empty()) return failed(std::move(reason));
    // A rename asks only for the folder's rights; a file that the user protected stays as it is.
    if (faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0) return failed(errno);
    target = {path, status.st_uid, status.st_gid, status.st_mode & 0777U};
    return {};
}

/// The list of further users and groups that a file has, as the system keeps it.
constexpr const char* kAccessList = "system.posix_acl_access";

/// That list; empty for a file without one.
std::string accessListOf(const std::string& path) {
    std::array<char, 65536> value{};
    const ssize_t size = getxattr(path.c_str(), kAccessList, value.data(), value.size());
    return {value.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0))};
}

/// Copies extended attributes as far as the system lets us; false when a list of further users and groups is
/// among those that it does not.
bool copyAttributes(const std::string& from, int to) {
    std::string names;
    const ssize_t length = listxattr(from.c_str(), nullptr, 0);
    if (length <= 0) return true;
    names.resize(static_cast<std::size_t>(length));
    const ssize_t listed = listxattr(from.c_str(), names.data(), names.size());
    names.resize(listed > 0 ? static_cast<std::size_t>(listed) : 0);
    bool complete = true;
    for (std::size_t at = 0; at < names.size(); at = names.find('\0', at) + 1) {
        const char* const name = names.c_str() + at;
        std::array<char, 65536> value{};
        const ssize_t size = getxattr(from.c_str(), name, value.data(), value.size());
        const bool copied =
            size >= 0 && fsetxattr(to, name, value.data(), static_cast<std::size_t>(size), 0) == 0;
        complete = complete && (copied || name != std::string_view(kAccessList));
    }
    return complete;
}

/// Makes the new file its predecessor's equal. Where the group or the list of further users cannot be kept,
/// whoever is in the group that the file has now may do what everybody may.
FileResult inherit(const Predecessor& from, int to) {
    struct stat status {};
    if (fstat(to, &status) != 0) return failed(errno);
    // The folder may give every new file a list that its predecessor did not have.
    fremovexattr(to, kAccessList);
    const bool sameGroup = status.st_gid == from.group || fchown(to, static_cast<uid_t>(-1), from.group) == 0;
    // Only the superuser can give files away; everybody else's new file is his own.
    if (status.st_uid != from.owner) static_cast<void>(fchown(to, from.owner, static_cast<gid_t>(-1)) == 0);
    const mode_t narrow = (from.rights & ~mode_t{070}) | ((from.rights & 07U) << 3U & from.rights);
    if (fchmod(to, sameGroup ? from.rights : narrow) != 0) return failed(errno);
    if (!copyAttributes(from.path, to) && fchmod(to, narrow) != 0) return failed(errno);
    return {};
}

std::string temporaryName(const std::string& target) {
    static std::atomic<unsigned> counter{0};
    const std::string own = ".vexa-" + std::to_string(getpid()) + '-' + std::to_string(++counter) + ".tmp";
    const std::string folder = folderOf(target);
    return folder == "/" ? folder + own : folder + '/' + own;
}

FileResult writeAll(int number, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(number, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return failed(errno);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
}

/// Reads to the end, whatever size the file had when it was opened.
FileResult readAll(int number, std::string& content, std::uint64_t limit) {
    std::array<char, 65536> block{};
    for (;;) {
        const ssize_t count = ::read(number, block.data(), block.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return failed(errno);
        if (count == 0) return {};
        if (static_cast<std::uint64_t>(count) > limit - content.size()) return tooLarge(limit);
        content.append(block.data(), static_cast<std::size_t>(count));
    }
}

FileResult syncFolder(const std::string& folder) {
    const Descriptor file(folder, O_RDONLY | O_DIRECTORY);
    if (!file.isOpen()) return failed(errno);
    // Some file systems have nothing to bring to the disk for a folder and say so with EINVAL.
    if (fsync(file.number()) != 0 && errno != EINVAL) return failed(errno);
    return {};
}

class PosixFileSystem final : public FileSystem {
  public:
    FileResult read(const std::string& path, std::string& content, std::uint64_t limit) override;
    FileResult readStream(const std::string& path, std::string& content, std::uint64_t limit) override;
    FileResult readBeginning(const std::string& path, std::string& content, std::size_t count) override;
    bool isFile(const std::string& path) override;
    bool isFolder(const std::string& path) override;
    std::optional<FileState> state(const std::string& path) override;
    bool isWritable(const std::string& path) override;
    std::string workingFolder() override;
    std::string canonicalPath(const std::string& path) override;
    bool isSameFile(const std::string& one, const std::string& other) override;
    FileResult createTemporary(const std::string& path, std::string& temporary) override {
        return createBeside(path, temporary, 0666);
    }
    FileResult createPrivateTemporary(const std::string& path, std::string& temporary) override {
        return createBeside(path, temporary, 0600);
    }
    FileResult append(const std::string& path, std::string_view bytes) override;
    FileResult flush(const std::string& path) override;
    FileResult replace(const std::string& from, const std::string& to) override;
    FileResult remove(const std::string& path) override;

  private:
    FileResult createBeside(const std::string& path, std::string& temporary, mode_t rightsOfNew);
};

FileResult PosixFileSystem::read(const std::string& path, std::string& content, std::uint64_t limit) {
    content.clear();
    // Without O_NONBLOCK the opening of a pipe would wait for a writer.
    const Descriptor file(toNativePath(path), O_RDONLY | O_NONBLOCK);
    if (!file.isOpen()) return failed(errno);
    struct stat status {};
    if (fstat(file.number(), &status) != 0) return failed(errno);
    if (std::string reason = refusal(status); !reason.empty()) return failed(std::move(reason));
    const auto size = static_cast<std::uint64_t>(status.st_size);
    if (size > limit) return tooLarge(limit);
    content.reserve(size);
    FileResult result = readAll(file.number(), content, limit);
    if (!result) content.clear();
    return result;
}

FileResult PosixFileSystem::readStream(const std::string& path, std::string& content, std::uint64_t limit) {
    content.clear();
    const Descriptor file(toNativePath(path), O_RDONLY);
    if (!file.isOpen()) return failed(errno);
    struct stat status {};
    if (fstat(file.number(), &status) != 0) return failed(errno);
    if (S_ISDIR(status.st_mode)) return failed(EISDIR);
    const auto size = S_ISREG(status.st_mode) ? static_cast<std::uint64_t>(status.st_size) : 0U;
    content.reserve(size);
    FileResult result = readAll(file.number(), content, std::max(limit, size));
    if (!result) content.clear();
    return result;
}

FileResult PosixFileSystem::readBeginning(const std::string& path, std::string& content, std::size_t count) {
    content.clear();
    const Descriptor file(toNativePath(path), O_RDONLY | O_NONBLOCK);
    if (!file.isOpen()) return failed(errno);
    content.resize(count);
    std::size_t filled = 0;
    while (filled < count) {
        const ssize_t got = ::read(file.number(), content.data() + filled, count - filled);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return failed(errno);
        if (got == 0) break;
        filled += static_cast<std::size_t>(got);
    }
    content.resize(filled);
    return {};
}

bool PosixFileSystem::isFile(const std::string& path) {
    struct stat status {};
    return stat(toNativePath(path).c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool PosixFileSystem::isFolder(const std::string& path) {
    struct stat status {};
    return stat(toNativePath(path).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::optional<FileState> PosixFileSystem::state(const std::string& path) {
    struct stat status {};
    if (stat(toNativePath(path).c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    FileState state;
    for (const auto number :
         {static_cast<std::int64_t>(status.st_dev), static_cast<std::int64_t>(status.st_ino),
          static_cast<std::int64_t>(status.st_size), status.st_mtim.tv_sec, status.st_mtim.tv_nsec}) {
        state.content += std::to_string(number) + ' ';
    }
    state.rights = std::to_string(status.st_uid) + ' ' + std::to_string(status.st_gid) + ' ' +
                   std::to_string(status.st_mode & 0777U) + ' ' + accessListOf(toNativePath(path));
    state.hasOtherNames = status.st_nlink > 1;
    state.changed = systemLocalTime(status.st_mtim.tv_sec);
    return state;
}

std::string PosixFileSystem::workingFolder() {
    std::error_code code;
    const std::filesystem::path folder = std::filesystem::current_path(code);
    return code ? "" : folder.string();
}

bool PosixFileSystem::isWritable(const std::string& path) {
    std::string target = toNativePath(path);
    std::optional<Predecessor> there;
    if (!followLinks(target) || !lookAtTarget(target, there)) return false;
    return there || faccessat(AT_FDCWD, folderOf(target).c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

std::string PosixFileSystem::canonicalPath(const std::string& path) {
    std::error_code code;
    std::string target = std::filesystem::absolute(toNativePath(path), code).string();
    if (code) return toNativePath(path);
    // A link to nothing yet counts as what it names, for that is what a save through it makes.
    std::string followed = target;
    if (followLinks(followed)) target = std::move(followed);
    const std::filesystem::path canonical = std::filesystem::weakly_canonical(target, code);
    return code ? std::filesystem::path(target).lexically_normal().string() : canonical.string();
}

bool PosixFileSystem::isSameFile(const std::string& one, const std::string& other) {
    struct stat first {};
    struct stat second {};
    const bool areThere =
        stat(toNativePath(one).c_str(), &first) == 0 && stat(toNativePath(other).c_str(), &second) == 0;
    return areThere ? first.st_dev == second.st_dev && first.st_ino == second.st_ino
                    : FileSystem::isSameFile(one, other);
}

FileResult PosixFileSystem::createBeside(const std::string& path, std::string& temporary,
                                         mode_t rightsOfNew) {
    std::string target = toNativePath(path);
    if (FileResult result = followLinks(target); !result) return result;
    std::optional<Predecessor> there;
    if (FileResult result = lookAtTarget(target, there); !result) return result;
    constexpr int kMostTries = 100;
    for (int i = 0; i < kMostTries; ++i) {
        const std::string name = temporaryName(target);
        std::optional<Descriptor> file;
        int code = 0;
        const auto make = [&] {
            file.emplace(name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, there ? 0600 : rightsOfNew);
            code = errno;
            return file->isOpen();
        };
        if (!makeTemporary(name, make)) {
            if (code == EEXIST) continue;
            return failed(code);
        }
        FileResult result = there ? inherit(*there, file->number()) : FileResult{};
        if (result) {
            temporary = name;
        } else {
            static_cast<void>(remove(name));
        }
        return result;
    }
    return failed(EEXIST);
}

FileResult PosixFileSystem::append(const std::string& path, std::string_view bytes) {
    Descriptor file(toNativePath(path), O_WRONLY | O_APPEND | O_NOFOLLOW | O_NONBLOCK);
    if (!file.isOpen()) return failed(errno);
    if (FileResult result = writeAll(file.number(), bytes); !result) return result;
    return file.closeNow();
}

FileResult PosixFileSystem::flush(const std::string& path) {
    Descriptor file(toNativePath(path), O_WRONLY | O_NOFOLLOW | O_NONBLOCK);
    if (!file.isOpen()) return failed(errno);
    if (fsync(file.number()) != 0) return failed(errno);
    return file.closeNow();
}

FileResult PosixFileSystem::replace(const std::string& from, const std::string& to) {
    std::string target = toNativePath(to);
    if (FileResult result = followLinks(target); !result) return result;
    const std::string source = toNativePath(from);
    if (rename(source.c_str(), target.c_str()) != 0) return failed(errno);
    forgetTemporary(source);
    return syncFolder(folderOf(target));
}

FileResult PosixFileSystem::remove(const std::string& path) {
    const std::string name = toNativePath(path);
    FileResult result = unlink(name.c_str()) == 0 ? FileResult{} : failed(errno);
    forgetTemporary(name);
    return result;
}

}  // namespace

FileSystem& nativeFileSystem() {
    static PosixFileSystem fileSystem;
    return fileSystem;
}

std::string toNativePath(std::string_view path) {
    std::string result(path);
    std::replace(result.begin(), result.end(), '\\', '/');
    return result;
}

std::filesystem::path streamPath(std::string_view path) { return toNativePath(path); }

}  // namespace vexa
