// Loading and unloading on Windows: the system calls this function, for threads as well.

#include <windows.h>

#include "module/exports/load_notification.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID /*reserved*/);

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID /*reserved*/) {
    static_assert(DLL_PROCESS_ATTACH == vexa::kProcessAttach);
    return vexa::notifyModule(module, reason);
}
