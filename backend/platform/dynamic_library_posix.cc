#include <dlfcn.h>

#include <filesystem>
#include <system_error>

#include "backend/platform/dynamic_library.h"
#include "backend/platform/file_system.h"
#include "backend/text/system_text.h"

namespace vexa {

namespace {

class PosixLibrary final : public DynamicLibrary {
  public:
    explicit PosixLibrary(void* handle) : handle_(handle) {}
    PosixLibrary(const PosixLibrary&) = delete;
    PosixLibrary& operator=(const PosixLibrary&) = delete;
    ~PosixLibrary() override { dlclose(handle_); }

    [[nodiscard]] Entry find(const char* name) const override {
        return reinterpret_cast<Entry>(dlsym(handle_, name));
    }

  private:
    void* handle_;
};

}  // namespace

std::unique_ptr<DynamicLibrary> DynamicLibrary::load(const std::string& path, FileResult& result) {
    // An empty path would give the program itself, and one without a separator a search of the system's
    // folders.
    const std::string native = toNativePath(path);
    if (native.find('/') == std::string::npos) {
        constexpr SystemText kReason = "a library is named by its full path, not by '^1'"_text;
        result = {false, std::string(kReason), {path}};
        return nullptr;
    }
    void* handle = dlopen(native.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
        const char* words = dlerror();
        result = {false, words != nullptr ? words : std::string("the library cannot be loaded"_text)};
        return nullptr;
    }
    result = {};
    return std::make_unique<PosixLibrary>(handle);
}

std::string programFolder() {
    std::error_code failed;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", failed);
    if (failed) return FileSystem::current().workingFolder();
    return program.parent_path().string();
}

}  // namespace vexa
