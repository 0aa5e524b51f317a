// Tables of any shape, made of the fuzzer's bytes: what must hold for every grid holds, and laying out ends.

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "tests/unit/tables/arbitrary_table.h"

using namespace vexa::tables;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Choices choices(data, size);
    const Table table = arbitraryTable(choices);
    for (const Table& each : {table, transposed(table), inShownOrder(table)}) {
        TableLayout layout(each);
        for (const Place layer : layersOf(each, LayerChoice::all)) {
            if (!wrongWith(layout.grid(layer), each, layer).empty()) {
                std::abort();
            }
        }
        const std::optional<FlatTable> flat = flatten(each);
        if (!flat || layOut(*flat).cells.size() != flat->cells.size()) {
            std::abort();
        }
    }
    return 0;
}
