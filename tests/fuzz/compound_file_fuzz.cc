// Any bytes as a compound file: refused, or what is written of its entries has the same ones.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "frontend/package/compound_file.h"

using namespace vexa::frontend;

namespace {

constexpr CompoundLimits limits{1U << 20U, 2000};

void require(bool ok) {
    if (!ok) {
        std::abort();
    }
}

/// Behind a file's own order comes that of the names, once and for all.
std::string copyOf(const CompoundFile& file) {
    CompoundLimits wide = limits;
    wide.fileBytes *= 3;
    std::string bytes;
    require(static_cast<bool>(file.write(gatherInto(bytes), wide)));
    return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    CompoundFile file;
    if (!file.read({reinterpret_cast<const char*>(data), size}, limits)) {
        require(file.count() == 1);
        return 0;
    }
    std::size_t total = 0;
    for (std::size_t place = 1; place < file.count(); ++place) {
        require(file.entry(place).parent < place && file.entry(file.entry(place).parent).isStorage);
        total += file.entry(place).content.size();
    }
    require(total <= size + 512);
    const std::string copy = copyOf(file);
    CompoundFile again;
    CompoundLimits wide = limits;
    wide.fileBytes *= 3;
    require(static_cast<bool>(again.read(copy, wide)) && again.count() == file.count());
    for (std::size_t place = 1; place < file.count(); ++place) {
        const CompoundEntry& entry = file.entry(place);
        bool found = false;
        for (std::size_t other = 1; other < again.count() && !found; ++other) {
            found = again.entry(other).name == entry.name && again.entry(other).content == entry.content &&
                    again.entry(other).isStorage == entry.isStorage;
        }
        require(found);
    }
    CompoundFile third;
    const std::string copyOfCopy = copyOf(again);
    require(static_cast<bool>(third.read(copyOfCopy, wide)) && copyOf(third) == copyOfCopy);
    return 0;
}
