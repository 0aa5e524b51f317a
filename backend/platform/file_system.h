// Files. Every file of the project is opened here.
//
// Inside the back end paths are written with backslashes, in the back end's character set; here they are
// UTF-8 and take both separators. They become the system's own form only where a file is opened.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "backend/platform/clock.h"

namespace vexa {

/// How a file operation ended, and why it failed: a text that the string tables may have, with the markers
/// ^1, ^2, ... for `arguments`, or words of the system's own. `shownReason` (backend/strings/dictionary.h) is
/// what the user sees.
struct [[nodiscard]] FileResult {
    bool ok = true;
    std::string reason{};  ///< empty on success
    std::vector<std::string> arguments{};

    explicit operator bool() const { return ok; }
};

/// What tells a file from one that took its place, or from what it was before.
struct FileState {
    std::string content;  ///< another one whenever the file was written or replaced
    std::string rights;   ///< another one whenever owner, group or rights are others; empty where none tell
    LocalTime changed{};  ///< when it was last written
    bool hasOtherNames = false;  ///< hard links: the same file stands under another name, too
};

/// The single operations that reading and saving are made of, so that tests can make any of them fail.
class FileSystem {
  public:
    virtual ~FileSystem() = default;

    /// The file system of this process.
    static FileSystem& current();
    /// Installs another one (not owned); null installs the system's.
    static void install(FileSystem* fileSystem);

    /// The whole file; refuses files above `limit` bytes, folders, devices and pipes. Never waits for a
    /// writer.
    virtual FileResult read(const std::string& path, std::string& content, std::uint64_t limit) = 0;
    /// The same for files, whatever their size, and for what a pipe or a device gives up to its end; waits
    /// for a pipe's writer. `limit` bounds what tells no size of its own.
    virtual FileResult readStream(const std::string& path, std::string& content, std::uint64_t limit) = 0;
    /// The first `count` bytes of the file, or all of a shorter one.
    virtual FileResult readBeginning(const std::string& path, std::string& content, std::size_t count);
    [[nodiscard]] virtual bool isFile(const std::string& path) = 0;
    [[nodiscard]] virtual bool isFolder(const std::string& path) = 0;
    /// Nothing where there is no such file, and where the file system cannot tell.
    [[nodiscard]] virtual std::optional<FileState> state(const std::string& path);
    /// True for a file that may be written, and for a name at which one may be made.
    [[nodiscard]] virtual bool isWritable(const std::string& path);
    /// Empty when it was deleted.
    [[nodiscard]] virtual std::string workingFolder() = 0;
    /// What `path` means, from the root of the file system, with symbolic links and parts such as ".."
    /// resolved, so that two paths of one file are the same text. Parts that do not exist stay as they are.
    [[nodiscard]] virtual std::string canonicalPath(const std::string& path) = 0;
    /// Whether both paths lead to one file, by whatever names: what is written to one is read from the other.
    [[nodiscard]] virtual bool isSameFile(const std::string& one, const std::string& other);

    /// Makes a new empty file in the folder of what `path` names (behind symbolic links, if it is one), with
    /// owner, group, rights and attributes of the file there as far as the system lets us (never more rights
    /// for anybody), and gives its name. Refuses what `replace` could not or should not
    /// replace: folders, devices, files without the right to write.
    virtual FileResult createTemporary(const std::string& path, std::string& temporary) = 0;
    /// The same, but where no file is yet, only its owner may read the new one.
    virtual FileResult createPrivateTemporary(const std::string& path, std::string& temporary) {
        return createTemporary(path, temporary);
    }
    virtual FileResult append(const std::string& path, std::string_view bytes) = 0;
    /// Brings the file's bytes to the disk.
    virtual FileResult flush(const std::string& path) = 0;
    /// Puts `from` in the place of `to` in one step, and brings the folder's entry to the disk. A symbolic
    /// link stays: what it names is replaced.
    virtual FileResult replace(const std::string& from, const std::string& to) = 0;
    virtual FileResult remove(const std::string& path) = 0;
};

/// A path in the system's own form: the separators of the system in the place of backslashes and slashes.
[[nodiscard]] std::string toNativePath(std::string_view path);
/// A path in the back end's form: backslashes in the place of slashes.
[[nodiscard]] std::string toBackslashPath(std::string_view path);

}  // namespace vexa
