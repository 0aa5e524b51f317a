// Gives back the thread slots of this image when it is unloaded. A process has 1088 of them. The threads
// library of the compiler, which stands in each image by itself, takes one when it is first used and keeps
// it, so that a back end that loads and unloads the module again and again would run out of them. The linker
// leads the calls of the runtime here (--wrap), since the number of the slot is known to nobody else.

#include <windows.h>

#include <array>
#include <atomic>

namespace {

using TakeSlot = DWORD(WINAPI*)();
using GiveSlot = BOOL(WINAPI*)(DWORD);

/// The addresses in the import table, by the names that the linker makes for what is wrapped.
extern "C" TakeSlot systemTake __asm__("__real___imp_TlsAlloc");
extern "C" GiveSlot systemGive __asm__("__real___imp_TlsFree");

/// The runtime takes two at most. Empty places hold 0, and slot 0 is held as 1: calls come before any
/// constructor.
std::array<std::atomic<DWORD>, 8> heldSlots{};

void exchangeHeld(DWORD before, DWORD after) {
    for (std::atomic<DWORD>& each : heldSlots) {
        DWORD expected = before;
        if (each.compare_exchange_strong(expected, after)) return;
    }
}

DWORD WINAPI takeSlot() {
    const DWORD slot = systemTake();
    if (slot != TLS_OUT_OF_INDEXES) exchangeHeld(0, slot + 1);
    return slot;
}

BOOL WINAPI giveSlot(DWORD slot) {
    exchangeHeld(slot + 1, 0);
    return systemGive(slot);
}

/// Its constructor is the first of the image, so that its destructor is the last: nothing asks for a slot any
/// more.
struct Returner {
    Returner() = default;
    Returner(const Returner&) = delete;
    Returner& operator=(const Returner&) = delete;
    ~Returner() {
        for (const std::atomic<DWORD>& each : heldSlots) {
            if (each != 0) systemGive(each - 1);
        }
    }
};
__attribute__((init_priority(101))) Returner returner;

}  // namespace

extern "C" TakeSlot wrappedTake __asm__("__wrap___imp_TlsAlloc");
extern "C" GiveSlot wrappedGive __asm__("__wrap___imp_TlsFree");
TakeSlot wrappedTake = takeSlot;
GiveSlot wrappedGive = giveSlot;
