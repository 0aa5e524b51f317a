#include <windows.h>

#include "backend/platform/dynamic_library.h"
#include "backend/platform/file_system.h"
#include "backend/platform/windows_path.h"
#include "backend/platform/windows_text.h"
#include "backend/text/system_text.h"

namespace vexa {

namespace {

class WindowsLibrary final : public DynamicLibrary {
  public:
    explicit WindowsLibrary(HMODULE handle) : handle_(handle) {}
    WindowsLibrary(const WindowsLibrary&) = delete;
    WindowsLibrary& operator=(const WindowsLibrary&) = delete;
    ~WindowsLibrary() override { FreeLibrary(handle_); }

    [[nodiscard]] Entry find(const char* name) const override {
        // Through a function type of any kind, since the two have different ones.
        return reinterpret_cast<Entry>(reinterpret_cast<void (*)()>(GetProcAddress(handle_, name)));
    }

  private:
    HMODULE handle_;
};

/// `code`: why the library at `whole` is not loaded.
FileResult loadFailure(const std::wstring& whole, DWORD code) {
    // The system says the same of the library and of those that it needs.
    if (code == ERROR_MOD_NOT_FOUND && GetFileAttributesW(whole.c_str()) != INVALID_FILE_ATTRIBUTES) {
        return {false, std::string("a library that it needs is missing"_text)};
    }
    return failureOf(code);
}

}  // namespace

std::unique_ptr<DynamicLibrary> DynamicLibrary::load(const std::string& path, FileResult& result) {
    // A name without a separator would be searched for in the system's folders.
    const std::string native = toNativePath(path);
    if (native.find('\\') == std::string::npos) {
        constexpr SystemText kReason = "a library is named by its full path, not by '^1'"_text;
        result = {false, std::string(kReason), {path}};
        return nullptr;
    }
    // What it needs is looked for in its own folder, too; no window is shown for what is missing.
    DWORD modeBefore = 0;
    SetThreadErrorMode(SEM_FAILCRITICALERRORS, &modeBefore);
    // Whole, since the system does not say what that means for a path from the working folder.
    const std::wstring whole = wholeSystemPath(systemPath(native));
    HMODULE handle = LoadLibraryExW(whole.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    const DWORD code = GetLastError();
    SetThreadErrorMode(modeBefore, nullptr);
    if (handle == nullptr) {
        result = loadFailure(whole, code);
        return nullptr;
    }
    result = {};
    return std::make_unique<WindowsLibrary>(handle);
}

std::string programFolder() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length == 0) return FileSystem::current().workingFolder();
        if (length < path.size()) {
            path.resize(length);
            break;
        }
        path.resize(path.size() * 2);
    }
    // With the prefix of long paths where the program was started by one.
    return pathOfSystem(path.substr(0, path.find_last_of(L'\\')));
}

}  // namespace vexa
