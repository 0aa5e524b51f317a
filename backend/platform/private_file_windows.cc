#include "backend/platform/file_rights_windows.h"
#include "backend/platform/private_file.h"
#include "backend/platform/windows_path.h"

namespace vexa {

bool makePrivate(const std::string& path) {
    const std::wstring name = systemPath(path);
    if (namesDevice(wholeSystemPath(name))) return false;
    OwnerOnly rights;
    if (!rights.works()) return false;
    HANDLE file = CreateFileW(name.c_str(), GENERIC_WRITE, 0, rights.attributes(), CREATE_NEW,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
        CloseHandle(file);
        return true;
    }
    // What is there already keeps its rights: they are its folder's or somebody's choice.
    return GetLastError() == ERROR_FILE_EXISTS;
}

}  // namespace vexa
