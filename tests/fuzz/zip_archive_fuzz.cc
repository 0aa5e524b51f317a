// Any bytes as an archive: refused, or all its entries are read within the limits, and a copy of them that
// was never unpacked has the same contents.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "frontend/package/zip_reader.h"
#include "frontend/package/zip_writer.h"

using namespace vexa::frontend;

namespace {

constexpr ZipLimits limits{1U << 20U, 1000, 1U << 20U, 4U << 20U, 255, true};

void require(bool ok) {
    if (!ok) {
        std::abort();
    }
}

std::string copyOf(const ZipReader& reader) {
    std::string bytes;
    // The same name may be written in another way; limits of the whole are those of another archive.
    ZipLimits wide = limits;
    wide.fileBytes = 8U << 20U;
    ZipWriter writer(gatherInto(bytes), wide, 1);
    for (std::size_t place = 0; place < reader.count(); ++place) {
        require(static_cast<bool>(writer.addPacked(reader.entry(place), reader.packed(place))));
    }
    require(static_cast<bool>(writer.finish()));
    return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    ZipReader reader(limits);
    if (!reader.open(bytes)) {
        require(reader.count() == 0);
        return 0;
    }
    const std::string copy = copyOf(reader);
    ZipReader again(limits);
    require(static_cast<bool>(again.open(copy)) && again.count() == reader.count());
    std::string content;
    std::string copied;
    for (std::size_t place = 0; place < reader.count(); ++place) {
        require(reader.find(reader.entry(place).name) == place);
        const PackageResult result = reader.read(place, content);
        require(again.read(place, copied).problem == result.problem && copied == content);
        require(!result || content.size() == reader.entry(place).bytes);
    }
    return 0;
}
