#include <sys/mman.h>

#include <new>

#include "backend/platform/memory.h"

namespace vexa {

void requireMemory(std::uint64_t bytes) {
    // What is not touched takes no memory, but limits of the process count it.
    void* const place =
        mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (place == MAP_FAILED) throw std::bad_alloc();
    munmap(place, bytes);
}

}  // namespace vexa
