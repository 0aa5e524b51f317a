// Any text as a table look: what is taken is written and read again as the same look.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "frontend/looks/look_reader.h"

using namespace vexa::frontend;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ReadLook read = readLook({reinterpret_cast<const char*>(data), size});
    if (read.look == nullptr) {
        if (read.problem.empty()) std::abort();
        return 0;
    }
    const ReadLook again = readLook(writeLook(*read.look));
    if (again.look == nullptr) std::abort();
    vexa::tables::TableLook first = *read.look;
    vexa::tables::TableLook second = *again.look;
    first.source.clear();
    second.source.clear();
    if (!(first == second)) std::abort();
    return 0;
}
