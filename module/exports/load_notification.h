// What happens when the back end loads the module.
#pragma once

namespace vexa {

/// Why the library is notified; the other reasons have no meaning for the module.
inline constexpr unsigned kProcessAttach = 1;

/// The library's load notification. For the process-attach reason it records `module`, the module's own
/// handle, and asks the common-block library once for the address of each shared common block. Every reason
/// answers success (1).
int notifyModule(void* module, unsigned reason);

/// The module's own handle, or null before it is loaded.
[[nodiscard]] void* moduleHandle();

}  // namespace vexa
