// A file system in memory whose n-th operation fails.
#pragma once

#include <map>
#include <string>

#include "backend/platform/file_system.h"

namespace vexa::frontend {

class MemoryFileSystem : public FileSystem {
  public:
    MemoryFileSystem() { FileSystem::install(this); }
    ~MemoryFileSystem() override { FileSystem::install(nullptr); }
    MemoryFileSystem(const MemoryFileSystem&) = delete;
    MemoryFileSystem& operator=(const MemoryFileSystem&) = delete;

    std::map<std::string, std::string> files;
    std::string folder;        ///< a path that is a folder; empty for none
    int failingOperation = 0;  ///< the changing operation that fails, counted from 1; 0 for none
    int operations = 0;        ///< changing operations so far

    FileResult read(const std::string& path, std::string& content, std::uint64_t limit) override {
        const auto found = files.find(path);
        if (found == files.end() || found->second.size() > limit) {
            return {false, "cannot be read"};
        }
        content = found->second;
        return {};
    }
    bool isFile(const std::string& path) override { return files.count(path) > 0; }
    bool isFolder(const std::string& path) override { return path == folder; }
    std::string workingFolder() override { return "/work"; }
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
