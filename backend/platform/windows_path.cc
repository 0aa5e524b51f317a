#include "backend/platform/windows_path.h"

#include <windows.h>

#include <algorithm>

#include "backend/platform/file_system.h"
#include "backend/platform/windows_text.h"

namespace vexa {

namespace {

constexpr std::wstring_view kLongPrefix = L"\\\\?\\";
constexpr std::wstring_view kLongSharePrefix = L"\\\\?\\UNC\\";
constexpr std::wstring_view kShare = L"\\\\";
constexpr std::wstring_view kDevices = L"\\\\.\\";

/// Folders have a lower limit than files: room for a short name must be left.
constexpr std::size_t kLongestUsualPath = MAX_PATH - 12;

std::wstring withLongPrefix(const std::wstring& whole) {
    if (whole.starts_with(kLongPrefix) || namesDevice(whole)) return whole;
    if (whole.starts_with(kShare)) return std::wstring(kLongSharePrefix) + whole.substr(kShare.size());
    return std::wstring(kLongPrefix) + whole;
}

}  // namespace

std::wstring wholeSystemPath(const std::wstring& path) {
    std::wstring whole(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetFullPathNameW(path.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr);
        const bool complete = length < whole.size();
        whole.resize(length);
        if (complete) return whole;
    }
}

std::wstring systemPath(std::string_view path) { return systemPath(wideText(toNativePath(path))); }

std::wstring systemPath(const std::wstring& path) {
    const std::wstring whole = wholeSystemPath(path);
    return whole.size() < kLongestUsualPath ? path : withLongPrefix(whole);
}

bool namesDevice(std::wstring_view whole) { return whole.starts_with(kDevices); }

bool namesStream(std::wstring_view whole) {
    return whole.find(L':', lengthOfRoot(whole)) != std::wstring_view::npos;
}

std::size_t lengthOfRoot(std::wstring_view whole) {
    const bool longShare = whole.starts_with(kLongSharePrefix);
    if (!longShare && (whole.starts_with(kLongPrefix) || !whole.starts_with(kShare))) {
        const std::size_t drive = whole.starts_with(kLongPrefix) ? kLongPrefix.size() : 0;
        return std::min(drive + 2, whole.size());
    }
    const std::size_t server = whole.find(L'\\', longShare ? kLongSharePrefix.size() : kShare.size());
    return std::min(whole.find(L'\\', std::min(server, whole.size() - 1) + 1), whole.size());
}

std::string pathOfSystem(std::wstring_view path) {
    if (path.starts_with(kLongSharePrefix)) {
        return narrowText(std::wstring(kShare).append(path.substr(kLongSharePrefix.size())));
    }
    const std::wstring_view plain =
        path.starts_with(kLongPrefix) ? path.substr(kLongPrefix.size()) : std::wstring_view();
    return narrowText(plain.substr(0, 2).ends_with(L':') ? plain : path);
}

std::string toNativePath(std::string_view path) {
    std::string result(path);
    std::replace(result.begin(), result.end(), '/', '\\');
    return result;
}

}  // namespace vexa
