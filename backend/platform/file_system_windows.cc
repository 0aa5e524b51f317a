#include <windows.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <vector>

#include "backend/platform/file_rights_windows.h"
#include "backend/platform/file_system_native.h"
#include "backend/platform/system_clock.h"
#include "backend/platform/system_reason.h"
#include "backend/platform/temporary_files.h"
#include "backend/platform/windows_path.h"
#include "backend/platform/windows_text.h"
#include "backend/text/system_text.h"

namespace vexa {

namespace {

/// Nobody is kept from a file because we read or write it.
constexpr DWORD kSharedWithAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

constexpr SystemText kDevice = "Not a file but a device or a pipe"_text;

FileResult failed(std::string reason) { return {false, std::move(reason)}; }
/// `number`: one of the C library.
FileResult failedAs(int number) { return failed(systemReason(number)); }

bool meansHeld(DWORD code) { return code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION; }

/// Does `action`, and again a few times while it fails because of another program, as `mayPass` tells by the
/// code: programs that scan new files hold them for some moments.
template <typename Action, typename Test>
void withPatience(Action action, Test mayPass) {
    constexpr int kMostTries = 5;
    constexpr DWORD kFirstWait = 10;  // milliseconds
    for (int tries = 1; !action() && tries < kMostTries && mayPass(GetLastError()); ++tries) {
        Sleep(kFirstWait << tries);
    }
}

/// An open file, closed with it.
class File {
  public:
    /// `rights`: those of a new file; null for those that its folder gives it.
    File(const std::wstring& path, DWORD access, DWORD disposition, DWORD flags = 0,
         SECURITY_ATTRIBUTES* rights = nullptr) {
        const auto open = [&] {
            handle_ = CreateFileW(path.c_str(), access, kSharedWithAll, rights, disposition,
                                  FILE_ATTRIBUTE_NORMAL | flags, nullptr);
            return isOpen();
        };
        withPatience(open, meansHeld);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() {
        if (isOpen()) CloseHandle(handle_);
    }

    [[nodiscard]] bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
    [[nodiscard]] HANDLE handle() const { return handle_; }

  private:
    HANDLE handle_ = INVALID_HANDLE_VALUE;
};

FileResult tooLarge(std::uint64_t limit) {
    constexpr SystemText kReason = "The file is larger than ^1 bytes"_text;
    return {false, std::string(kReason), {std::to_string(limit)}};
}

bool hasAttribute(DWORD attributes, DWORD wanted) {
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & wanted) != 0;
}

bool isFolderPath(const std::wstring& path) {
    return hasAttribute(GetFileAttributesW(path.c_str()), FILE_ATTRIBUTE_DIRECTORY);
}

/// No device, and no pipe.
bool isOnDisk(const File& file) { return GetFileType(file.handle()) == FILE_TYPE_DISK; }

bool meansNoSuchFile(DWORD code) { return code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND; }

/// The folder of a path, with its separator; empty for a name alone.
std::wstring folderOf(const std::wstring& path) { return path.substr(0, path.find_last_of(L"\\:") + 1); }

/// Why what was last tried with `path` failed. Of a path that leads through a file the system says only that
/// there is none.
FileResult lastFailureAt(const std::wstring& path) {
    const DWORD code = GetLastError();
    if (meansNoSuchFile(code) || code == ERROR_INVALID_NAME) {
        for (std::size_t end = path.rfind(L'\\'); end != std::wstring::npos && end > 0;
             end = path.rfind(L'\\', end - 1)) {
            const DWORD attributes = GetFileAttributesW(path.substr(0, end).c_str());
            if (attributes == INVALID_FILE_ATTRIBUTES) continue;
            if (!hasAttribute(attributes, FILE_ATTRIBUTE_DIRECTORY)) return failedAs(ENOTDIR);
            break;
        }
    }
    return failureOf(code);
}

/// Where the path of an existing file or folder leads to in the end, links resolved; empty when there is
/// none.
std::wstring finalPath(const std::wstring& path) {
    const File file(path, 0, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    if (!file.isOpen()) return {};
    std::wstring result(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetFinalPathNameByHandleW(
            file.handle(), result.data(), static_cast<DWORD>(result.size()), FILE_NAME_NORMALIZED);
        const bool complete = length < result.size();
        result.resize(length);
        if (complete) return result;
    }
}

/// What a save through `path` replaces: behind links, if it is one. A link to nothing is refused.
FileResult followLinks(std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (!hasAttribute(attributes, FILE_ATTRIBUTE_REPARSE_POINT)) return {};
    std::wstring target = finalPath(path);
    if (target.empty()) return lastFailure();
    path = std::move(target);
    return {};
}

/// What keeps the file at `path` from being replaced; nothing does where there is none, and `there` is false
/// then.
FileResult checkTarget(const std::wstring& path, bool& there) {
    const std::wstring whole = wholeSystemPath(path);
    if (namesDevice(whole)) return failed(std::string(kDevice));
    if (namesStream(whole)) return failedAs(EINVAL);
    const DWORD attributes = GetFileAttributesW(path.c_str());
    there = attributes != INVALID_FILE_ATTRIBUTES;
    if (!there) return meansNoSuchFile(GetLastError()) ? FileResult{} : lastFailure();
    if (hasAttribute(attributes, FILE_ATTRIBUTE_DIRECTORY)) return failedAs(EISDIR);
    if (hasAttribute(attributes, FILE_ATTRIBUTE_DEVICE)) return failed(std::string(kDevice));
    // A rename asks only for the folder's rights; a file that the user protected stays as it is.
    if (hasAttribute(attributes, FILE_ATTRIBUTE_READONLY)) return failedAs(EACCES);
    const File file(path, GENERIC_WRITE, OPEN_EXISTING);
    if (!file.isOpen()) return lastFailure();
    return isOnDisk(file) ? FileResult{} : failed(std::string(kDevice));
}

std::wstring temporaryName(const std::wstring& target) {
    static std::atomic<unsigned> counter{0};
    return folderOf(target) + L".vexa-" + std::to_wstring(GetCurrentProcessId()) + L'-' +
           std::to_wstring(++counter) + L".tmp";
}

FileResult writeAll(HANDLE file, std::string_view bytes) {
    constexpr std::size_t kLargestPiece = std::size_t{1} << 30U;
    while (!bytes.empty()) {
        DWORD written = 0;
        const auto piece = static_cast<DWORD>(std::min(bytes.size(), kLargestPiece));
        if (WriteFile(file, bytes.data(), piece, &written, nullptr) == 0) return lastFailure();
        bytes.remove_prefix(written);
    }
    return {};
}

/// Reads to the end, whatever size the file had when it was opened.
FileResult readAll(HANDLE file, std::string& content, std::uint64_t limit) {
    std::array<char, 65536> block{};
    for (;;) {
        DWORD count = 0;
        const BOOL read = ReadFile(file, block.data(), static_cast<DWORD>(block.size()), &count, nullptr);
        // The end of a pipe whose writer has gone is told as an error.
        if (read == 0) return GetLastError() == ERROR_BROKEN_PIPE ? FileResult{} : lastFailure();
        if (count == 0) return {};
        if (count > limit - content.size()) return tooLarge(limit);
        content.append(block.data(), count);
    }
}

class WindowsFileSystem final : public FileSystem {
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
    FileResult createTemporary(const std::string& path, std::string& temporary) override;
    FileResult createPrivateTemporary(const std::string& path, std::string& temporary) override;
    FileResult append(const std::string& path, std::string_view bytes) override;
    FileResult flush(const std::string& path) override;
    FileResult replace(const std::string& from, const std::string& to) override;
    FileResult remove(const std::string& path) override;

  private:
    static FileResult readWhole(const std::string& path, std::string& content, std::uint64_t limit,
                                bool streams);
    /// `rights`: those of the new file where none is yet; null for those that its folder gives it.
    static FileResult makeTemporary(const std::string& path, SECURITY_ATTRIBUTES* rights,
                                    std::string& temporary);
};

FileResult WindowsFileSystem::readWhole(const std::string& path, std::string& content, std::uint64_t limit,
                                        bool streams) {
    content.clear();
    const std::wstring name = systemPath(path);
    if (isFolderPath(name)) return failedAs(EISDIR);
    const File file(name, GENERIC_READ, OPEN_EXISTING);
    if (!file.isOpen()) return lastFailureAt(name);
    const bool onDisk = isOnDisk(file);
    if (!onDisk && !streams) return failed(std::string(kDevice));
    LARGE_INTEGER length{};
    if (onDisk && GetFileSizeEx(file.handle(), &length) == 0) return lastFailure();
    const auto size = static_cast<std::uint64_t>(length.QuadPart);
    if (size > limit && !streams) return tooLarge(limit);
    content.reserve(size);
    FileResult result = readAll(file.handle(), content, streams ? std::max(limit, size) : limit);
    if (!result) content.clear();
    return result;
}

FileResult WindowsFileSystem::read(const std::string& path, std::string& content, std::uint64_t limit) {
    return readWhole(path, content, limit, false);
}

FileResult WindowsFileSystem::readStream(const std::string& path, std::string& content, std::uint64_t limit) {
    return readWhole(path, content, limit, true);
}

FileResult WindowsFileSystem::readBeginning(const std::string& path, std::string& content,
                                            std::size_t count) {
    content.clear();
    const std::wstring name = systemPath(path);
    if (isFolderPath(name)) return failedAs(EISDIR);
    const File file(name, GENERIC_READ, OPEN_EXISTING);
    if (!file.isOpen()) return lastFailureAt(name);
    if (!isOnDisk(file)) return failed(std::string(kDevice));
    content.resize(count);
    std::size_t filled = 0;
    while (filled < count) {
        DWORD got = 0;
        if (ReadFile(file.handle(), content.data() + filled, static_cast<DWORD>(count - filled), &got,
                     nullptr) == 0) {
            return lastFailure();
        }
        if (got == 0) break;
        filled += got;
    }
    content.resize(filled);
    return {};
}

bool WindowsFileSystem::isFile(const std::string& path) {
    const std::wstring name = systemPath(path);
    const DWORD attributes = GetFileAttributesW(name.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || hasAttribute(attributes, FILE_ATTRIBUTE_DIRECTORY))
        return false;
    // Devices have the attributes of files, also such as this machine lacks.
    if (namesDevice(wholeSystemPath(name))) return false;
    const File file(name, 0, OPEN_EXISTING);
    if (file.isOpen()) return isOnDisk(file);
    // A file that others keep closed is one all the same.
    const DWORD failure = GetLastError();
    return failure == ERROR_ACCESS_DENIED || meansHeld(failure);
}

bool WindowsFileSystem::isFolder(const std::string& path) { return isFolderPath(systemPath(path)); }

std::optional<FileState> WindowsFileSystem::state(const std::string& path) {
    // From 1601 to 1970, and in a second.
    constexpr std::int64_t kBeginning = 11'644'473'600;
    constexpr std::int64_t kTicks = 10'000'000;
    const File file(systemPath(path), FILE_READ_ATTRIBUTES, OPEN_EXISTING);
    BY_HANDLE_FILE_INFORMATION found{};
    if (!file.isOpen() || !isOnDisk(file) || GetFileInformationByHandle(file.handle(), &found) == 0) {
        return std::nullopt;
    }
    FileState state;
    for (const DWORD number :
         {found.dwVolumeSerialNumber, found.nFileIndexHigh, found.nFileIndexLow, found.nFileSizeHigh,
          found.nFileSizeLow, found.ftLastWriteTime.dwHighDateTime, found.ftLastWriteTime.dwLowDateTime}) {
        state.content += std::to_string(number) + ' ';
    }
    state.hasOtherNames = found.nNumberOfLinks > 1;
    const std::int64_t ticks = (static_cast<std::int64_t>(found.ftLastWriteTime.dwHighDateTime) << 32U) +
                               found.ftLastWriteTime.dwLowDateTime;
    state.changed = systemLocalTime(ticks / kTicks - kBeginning);
    return state;
}

std::string WindowsFileSystem::workingFolder() { return pathOfSystem(wholeSystemPath(L".")); }

bool WindowsFileSystem::isWritable(const std::string& path) {
    std::wstring target = systemPath(path);
    bool there = false;
    if (!followLinks(target) || !checkTarget(target, there)) return false;
    if (there) return true;
    const std::wstring folder = folderOf(target);
    const File opened(folder.empty() ? L"." : folder, FILE_ADD_FILE, OPEN_EXISTING,
                      FILE_FLAG_BACKUP_SEMANTICS);
    return opened.isOpen();
}

std::string WindowsFileSystem::canonicalPath(const std::string& path) {
    const std::wstring whole = wholeSystemPath(systemPath(path));
    if (whole.empty()) return toNativePath(path);
    // The longest beginning that exists, without its links, and the rest as it stands.
    const std::size_t least = std::max<std::size_t>(lengthOfRoot(whole), 1);
    for (std::size_t end = whole.size(); end != std::wstring::npos && end >= least;
         end = whole.rfind(L'\\', end - 1)) {
        // Behind a drive's colon the separator belongs to the folder.
        const bool root = whole[end - 1] == L':';
        std::wstring found = finalPath(whole.substr(0, root ? end + 1 : end));
        if (found.empty()) continue;
        while (!found.empty() && found.back() == L'\\') found.pop_back();
        const std::wstring rest = whole.substr(std::min(end, whole.size()));
        return pathOfSystem(found) + narrowText(rest);
    }
    return pathOfSystem(whole);
}

bool WindowsFileSystem::isSameFile(const std::string& one, const std::string& other) {
    const File first(systemPath(one), FILE_READ_ATTRIBUTES, OPEN_EXISTING);
    const File second(systemPath(other), FILE_READ_ATTRIBUTES, OPEN_EXISTING);
    BY_HANDLE_FILE_INFORMATION here{};
    BY_HANDLE_FILE_INFORMATION there{};
    if (!first.isOpen() || !second.isOpen() || GetFileInformationByHandle(first.handle(), &here) == 0 ||
        GetFileInformationByHandle(second.handle(), &there) == 0) {
        return FileSystem::isSameFile(one, other);
    }
    return here.dwVolumeSerialNumber == there.dwVolumeSerialNumber &&
           here.nFileIndexHigh == there.nFileIndexHigh && here.nFileIndexLow == there.nFileIndexLow;
}

FileResult WindowsFileSystem::createTemporary(const std::string& path, std::string& temporary) {
    return makeTemporary(path, nullptr, temporary);
}

FileResult WindowsFileSystem::createPrivateTemporary(const std::string& path, std::string& temporary) {
    OwnerOnly rights;
    return rights.works() ? makeTemporary(path, rights.attributes(), temporary) : lastFailure();
}

FileResult WindowsFileSystem::makeTemporary(const std::string& path, SECURITY_ATTRIBUTES* rights,
                                            std::string& temporary) {
    std::wstring target = systemPath(path);
    if (FileResult result = followLinks(target); !result) return result;
    bool there = false;
    if (FileResult result = checkTarget(target, there); !result) return result;
    constexpr int kMostTries = 100;
    for (int i = 0; i < kMostTries; ++i) {
        const std::wstring name = systemPath(temporaryName(target));
        FileResult made;
        bool isTaken = false;
        const auto make = [&] {
            const File file(name, GENERIC_WRITE, CREATE_NEW, 0, there ? nullptr : rights);
            if (file.isOpen()) return true;
            isTaken = GetLastError() == ERROR_FILE_EXISTS;
            made = lastFailureAt(name);
            return false;
        };
        if (!vexa::makeTemporary(pathOfSystem(name), make)) {
            if (isTaken) continue;
            return made;
        }
        if (there) copyRightsAndAttributes(target, name);
        temporary = pathOfSystem(name);
        return {};
    }
    return failedAs(EEXIST);
}

FileResult WindowsFileSystem::append(const std::string& path, std::string_view bytes) {
    const File file(systemPath(path), FILE_APPEND_DATA, OPEN_EXISTING);
    return file.isOpen() ? writeAll(file.handle(), bytes) : lastFailure();
}

FileResult WindowsFileSystem::flush(const std::string& path) {
    const File file(systemPath(path), GENERIC_WRITE, OPEN_EXISTING);
    if (!file.isOpen() || FlushFileBuffers(file.handle()) == 0) return lastFailure();
    return {};
}

FileResult WindowsFileSystem::replace(const std::string& from, const std::string& to) {
    std::wstring target = systemPath(to);
    if (FileResult result = followLinks(target); !result) return result;
    const std::wstring source = systemPath(from);
    constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    bool done = false;
    const auto move = [&] { return done = MoveFileExW(source.c_str(), target.c_str(), kHow) != 0; };
    // A target that is open elsewhere is told as a lack of rights.
    withPatience(move, [](DWORD code) { return code == ERROR_ACCESS_DENIED || meansHeld(code); });
    if (!done) return lastFailure();
    forgetTemporary(pathOfSystem(source));
    return {};
}

FileResult WindowsFileSystem::remove(const std::string& path) {
    const std::wstring name = systemPath(path);
    FileResult result = DeleteFileW(name.c_str()) != 0 ? FileResult{} : lastFailure();
    forgetTemporary(pathOfSystem(name));
    return result;
}

}  // namespace

FileSystem& nativeFileSystem() {
    static WindowsFileSystem fileSystem;
    return fileSystem;
}

std::filesystem::path streamPath(std::string_view path) { return systemPath(path); }

}  // namespace vexa
