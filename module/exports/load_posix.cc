// Loading and unloading on systems with ELF libraries: the dynamic linker runs these two functions.

#include <dlfcn.h>

#include "module/exports/load_notification.h"

namespace vexa {

namespace {

constexpr unsigned kProcessDetach = 0;

/// The address that this library is loaded at, which stands for its handle.
void* libraryBase() {
    static const char anchor = 0;
    Dl_info info{};
    return dladdr(&anchor, &info) != 0 ? info.dli_fbase : nullptr;
}

__attribute__((constructor)) void attach() { notifyModule(libraryBase(), kProcessAttach); }

__attribute__((destructor)) void detach() { notifyModule(libraryBase(), kProcessDetach); }

}  // namespace

}  // namespace vexa
