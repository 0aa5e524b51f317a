#include <windows.h>

#include <new>

#include "backend/platform/memory.h"

namespace vexa {

void requireMemory(std::uint64_t bytes) {
    void* const place = VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    if (place == nullptr) throw std::bad_alloc();
    VirtualFree(place, 0, MEM_RELEASE);
}

}  // namespace vexa
