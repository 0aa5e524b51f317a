// A file system in memory whose n-th operation fails.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "backend/platform/file_system.h"

namespace vexa::frontend {

class MemoryFileSystem : public FileSystem {
  public:
    MemoryFileSystem() { FileSystem::install(this); }
    ~MemoryFileSystem() override { FileSystem::install(nullptr); }
    MemoryFileSystem(const MemoryFileSystem&) = delete;
    MemoryFileSystem& operator=(const MemoryFileSystem&) = delete;

    std::map<std::string, std::string> files;
    std::map<std::string, std::string> links;  ///< symbolic links and what they name, from the root
    bool losesRights = false;                  ///< a replaced file has other rights than its predecessor
    std::string folder;                        ///< a path that is a folder; empty for none
    int failingOperation = 0;           ///< the changing operation that fails, counted from 1; 0 for none
    int operations = 0;                 ///< changing operations so far
    std::vector<std::string> replaced;  ///< the files that were put in their places, in that order

    FileResult read(const std::string& path, std::string& content, std::uint64_t limit) override {
        const auto found = files.find(path);
        if (found == files.end() || found->second.size() > limit) {
            return {false, "cannot be read"};
        }
        content = found->second;
        return {};
    }
    FileResult readStream(const std::string& path, std::string& content, std::uint64_t limit) override {
        return read(path, content, limit);
    }
    bool isFile(const std::string& path) override { return files.count(path) > 0; }
    bool isFolder(const std::string& path) override { return path == folder; }
    std::string workingFolder() override { return "/docs"; }
    std::string canonicalPath(const std::string& path) override {
        const std::filesystem::path whole = std::filesystem::path(workingFolder()) / path;
        std::string normal = whole.lexically_normal().generic_string();
        const auto link = links.find(normal);
        return link == links.end() ? normal : link->second;
    }
    LocalTime changed{2026, 3, 5, 10, 7, 9};    ///< when every file was last written
    std::map<std::string, std::string> rights;  ///< of files that have some

    std::optional<FileState> state(const std::string& path) override {
        const auto found = files.find(path);
        if (found == files.end()) return std::nullopt;
        const auto theirs = rights.find(path);
        return FileState{found->second, theirs == rights.end() ? "" : theirs->second, changed};
    }
    FileResult createTemporary(const std::string& path, std::string& temporary) override {
        temporary = path + ".tmp";
        return step([&] { files[temporary].clear(); });
    }
    FileResult append(const std::string& path, std::string_view bytes) override {
        return step([&] { files[path] += bytes; });
    }
    FileResult flush(const std::string& /*path*/) override {
        return step([] {});
    }
    FileResult replace(const std::string& from, const std::string& to) override {
        return step([&] {
            files[to] = files[from];
            files.erase(from);
            if (losesRights) rights[to] = "others";
            replaced.push_back(to);
        });
    }
    FileResult remove(const std::string& path) override {
        files.erase(path);
        return {};
    }

  private:
    template <typename Change>
    FileResult step(Change change) {
        if (++operations == failingOperation) {
            return {false, "disk full"};
        }
        change();
        return {};
    }
};

}  // namespace vexa::frontend
