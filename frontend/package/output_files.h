// One or several files that are written together. They grow beside their places as temporary files and take
// their places only when all of them are whole: a place holds its old or its new file at every moment.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/package/package_result.h"

namespace vexa::frontend {

/// Who may read a file that was not there before; one that was keeps its rights.
enum class NewFileRights { usual, ownerOnly };

/// Everything goes through the file system of `FileSystem::current()`. What is not committed when the object
/// dies is abandoned.
class OutputFiles {
  public:
    OutputFiles() = default;
    ~OutputFiles() { abandon(); }
    OutputFiles(const OutputFiles&) = delete;
    OutputFiles& operator=(const OutputFiles&) = delete;

    /// Begins the file `path` (UTF-8, either separator); the number that it has here goes to `file`. Symbolic
    /// links are followed. Fails where no file can be made or replaced, for a place that was begun before,
    /// and for the file that the process keeps (backend/platform/kept_file.h).
    PackageResult begin(const std::string& path, std::size_t& file,
                        NewFileRights rights = NewFileRights::usual);
    PackageResult write(std::size_t file, std::string_view bytes);
    /// Writes into the file; good as long as this object.
    [[nodiscard]] ByteSink sink(std::size_t file);
    /// Begins a file and writes all of it.
    PackageResult add(const std::string& path, std::string_view content);

    /// The file that takes its place last, so that what it refers to is there by then; the one begun last if
    /// this is not called.
    void setMain(std::size_t file) { main_ = file; }

    /// Brings every file to the disk, then puts each in its place, the main one last. When that fails, no
    /// further one takes its place, those that had no predecessor are taken away again, and every temporary
    /// file is removed. The first failure of a call above is the result, too.
    PackageResult commit();
    /// Files of the last commit whose predecessors belonged to somebody else or let others in: the system did
    /// not let us keep that. In the order in which they were begun.
    [[nodiscard]] const std::vector<std::string>& withOtherRights() const { return withOtherRights_; }
    /// Files of the last commit whose predecessors stay as they were under another name (a hard link).
    [[nodiscard]] const std::vector<std::string>& withOtherNames() const { return withOtherNames_; }
    /// Removes the temporary files; the places stay as they were.
    void abandon();

  private:
    struct File {
        std::string path;
        std::string place;  ///< the same for every path of one file
        std::string temporary;
        std::string rights;   ///< of the predecessor; empty without one
        std::string waiting;  ///< bytes that were not handed to the system yet
        bool hasOtherNames = false;
        bool isNew = false;
        bool inPlace = false;
    };
    PackageResult failed(const FileResult& result);
    PackageResult pass(File& file);
    PackageResult flushAll();
    PackageResult replaceAll();
    void compareWithPredecessors();

    static constexpr std::size_t none = static_cast<std::size_t>(-1);
    std::vector<File> files_;
    std::size_t main_ = none;
    std::vector<std::string> withOtherRights_;
    std::vector<std::string> withOtherNames_;
    PackageResult result_;
};

}  // namespace vexa::frontend
