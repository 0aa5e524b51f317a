#include "backend/platform/file_rights_windows.h"
#include "backend/platform/private_file.h"
#include "backend/platform/windows_path.h"

namespace vexa {

void makePrivate(const std::string& path) {
    OwnerOnly rights;
    if (!rights.works()) return;
    // What is there already keeps its rights: they are its folder's or somebody's choice.
    HANDLE file = CreateFileW(systemPath(path).c_str(), GENERIC_WRITE, 0, rights.attributes(), CREATE_NEW,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE) CloseHandle(file);
}

}  // namespace vexa
