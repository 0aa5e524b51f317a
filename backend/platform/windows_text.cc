#include "backend/platform/windows_text.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cerrno>

#include "backend/platform/system_reason.h"
#include "backend/text/system_text.h"
#include "backend/text/utf16.h"

namespace vexa {

namespace {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

struct KnownError {
    DWORD code;
    int number;  // of the C library
};

constexpr std::array<KnownError, 25> kKnownErrors = {{
    {ERROR_FILE_NOT_FOUND, ENOENT},
    {ERROR_PATH_NOT_FOUND, ENOENT},
    {ERROR_INVALID_DRIVE, ENOENT},
    {ERROR_INVALID_NAME, ENOENT},
    {ERROR_BAD_PATHNAME, ENOENT},
    {ERROR_BAD_NETPATH, ENOENT},
    {ERROR_BAD_NET_NAME, ENOENT},
    {ERROR_MOD_NOT_FOUND, ENOENT},
    {ERROR_DIRECTORY, ENOTDIR},
    {ERROR_ACCESS_DENIED, EACCES},
    {ERROR_WRITE_PROTECT, EROFS},
    {ERROR_SHARING_VIOLATION, EBUSY},
    {ERROR_LOCK_VIOLATION, EBUSY},
    {ERROR_FILE_EXISTS, EEXIST},
    {ERROR_ALREADY_EXISTS, EEXIST},
    {ERROR_DISK_FULL, ENOSPC},
    {ERROR_HANDLE_DISK_FULL, ENOSPC},
    {ERROR_FILENAME_EXCED_RANGE, ENAMETOOLONG},
    {ERROR_TOO_MANY_OPEN_FILES, EMFILE},
    {ERROR_NOT_ENOUGH_MEMORY, ENOMEM},
    {ERROR_OUTOFMEMORY, ENOMEM},
    {ERROR_BROKEN_PIPE, EPIPE},
    {ERROR_NO_DATA, EPIPE},
    {ERROR_NOT_SAME_DEVICE, EXDEV},
    {ERROR_BAD_EXE_FORMAT, ENOEXEC},
}};

/// Whether a sentence of the system has places for what only the system knows, such as "%1".
bool hasInserts(std::wstring_view text) {
    const std::size_t percent = text.find(L'%');
    return percent != std::wstring_view::npos && text.substr(percent + 1, 1).find_first_of(L"123456789") == 0;
}

/// The system's sentence, without the period and line end that it has; only the code where that tells more.
FileResult systemsOwnWords(DWORD code) {
    std::array<wchar_t, 512> buffer{};
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        code, 0, buffer.data(), static_cast<DWORD>(buffer.size()), nullptr);
    std::wstring_view text(buffer.data(), length);
    while (!text.empty() && (text.back() <= L' ' || text.back() == L'.')) text.remove_suffix(1);
    if (!text.empty() && !hasInserts(text)) return {false, narrowText(text)};
    return {false, std::string("Windows error ^1"_text), {std::to_string(code)}};
}

}  // namespace

std::wstring wideText(std::string_view utf8) {
    const std::u16string units = utf8ToUtf16(utf8);
    return {units.begin(), units.end()};
}

std::string narrowText(std::wstring_view text) {
    return utf16ToUtf8({reinterpret_cast<const char16_t*>(text.data()), text.size()});
}

FileResult failureOf(unsigned long code) {
    const auto* const known = std::find_if(kKnownErrors.begin(), kKnownErrors.end(),
                                           [code](const KnownError& error) { return error.code == code; });
    if (known != kKnownErrors.end()) return {false, systemReason(known->number)};
    return systemsOwnWords(code);
}

FileResult lastFailure() { return failureOf(GetLastError()); }

}  // namespace vexa
