// File specifications: handles, the working folder, and the expansion of names to whole paths.
//
// Texts are in the back end's character set; results are written with backslashes.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace vexa {

/// What the back end knows of the user's files: handles of FILE HANDLE and the folder of CD.
class FileLocations {
  public:
    static FileLocations& current();

    /// FILE HANDLE name /NAME='target'. Handles are compared without regard to case; a later one replaces an
    /// earlier.
    void setHandle(std::string_view name, std::string_view target);
    /// The target of a handle, or empty.
    [[nodiscard]] std::string handle(std::string_view name) const;
    /// CD 'folder'. A relative folder is taken from the present one. False when it is no folder; nothing
    /// changes then.
    [[nodiscard]] bool changeFolder(std::string_view folder);
    /// The folder that relative names are taken from, with backslashes.
    [[nodiscard]] std::string folder() const;
    /// Forgets all handles and goes back to the process's own folder.
    void reset();

  private:
    std::map<std::string, std::string> handles_;  // key in capitals
    std::string folder_;                          // empty until changed
};

/// Room that the buffers of the two functions below must have, in bytes.
inline constexpr int kFileSpecificationCapacity = 4096;

/// Resolves a file or directory handle that `text` (of `length` bytes) is or begins with ("data",
/// "data\x.vxv", "data/x.vxv"). 0: `buffer` holds the resolved text; otherwise there is no handle, or the
/// resolved text has no room, and the buffer is untouched.
int ExpandDirectoryHandle(const char* text, char* buffer, int length);

/// Expands a relative file name to a whole path, taken from the back end's folder. 0: `buffer` holds it;
/// otherwise it cannot be expanded (empty, or too long) and the buffer is untouched.
int ExpandFileSpecification(const char* text, char* buffer);

/// Both one after the other: the whole path of `name`; `name` itself where it has none.
[[nodiscard]] std::string wholeFileName(std::string name);

/// `path` without backslashes at its end, but for one that is all of it.
[[nodiscard]] std::string withoutFinalSeparators(std::string path);

/// Looks a whole path up in the file system; nothing is made or changed. `length` becomes the bytes of the
/// path. `valid` becomes 1 when the path names a file in a folder that is there, and no folder; `exists` when
/// the file is there; `writable` when it may be written, or made when it is not there. Else they become 0.
/// Returns 0 when the path is valid and writable.
int VALIDATECLIENTFILESPEC(const char* path, int* length, int* valid, int* exists, int* writable);

}  // namespace vexa
