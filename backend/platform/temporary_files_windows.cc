#include <windows.h>

#include <mutex>
#include <set>
#include <string>

#include "backend/platform/interrupt.h"
#include "backend/platform/temporary_files.h"
#include "backend/platform/windows_path.h"

namespace vexa {

namespace {

/// Never destroyed: the end of the process may come while others still ask for it.
struct Remembered {
    std::mutex guard;
    std::set<std::string> paths;
};

Remembered& remembered() {
    static auto* const all = new Remembered;
    return *all;
}

/// The guard must be held.
void removeAll() {
    // One that is open just now vanishes when it is closed, at the latest with the process.
    for (const std::string& path : remembered().paths) DeleteFileW(systemPath(path).c_str());
}

/// Called on a thread of its own, so that it may wait and take memory.
BOOL WINAPI removeBeforeTheEnd(DWORD event) {
    if (event == CTRL_C_EVENT && catchesInterrupts()) return FALSE;
    // The process ends. The guard is never given back, so that no file is made any more.
    remembered().guard.lock();
    removeAll();
    return FALSE;
}

}  // namespace

bool makeTemporary(const std::string& path, const std::function<bool()>& make) {
    const std::lock_guard lock(remembered().guard);
    if (!make()) return false;
    // Only as long as there is something to remove: the library may be unloaded, and its handler with it.
    if (remembered().paths.empty()) SetConsoleCtrlHandler(removeBeforeTheEnd, TRUE);
    remembered().paths.insert(path);
    return true;
}

void forgetTemporary(const std::string& path) {
    const std::lock_guard lock(remembered().guard);
    if (remembered().paths.erase(path) != 0 && remembered().paths.empty()) {
        SetConsoleCtrlHandler(removeBeforeTheEnd, FALSE);
    }
}

void removeTemporaries() {
    const std::lock_guard lock(remembered().guard);
    removeAll();
}

}  // namespace vexa
