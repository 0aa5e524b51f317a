// Reads an entry of an archive so that later most of it can be copied without being unpacked again.
#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/package/entry_inflater.h"
#include "frontend/package/zip_entry_stream.h"

namespace vexa::frontend {

/// The marks of an entry while it is being read, perhaps by another thread.
class PackedMarks {
  public:
    /// Moves from them. Beyond `mostWaiting` that nobody took they are passed over: where nobody asks for
    /// marks for long, they would only take memory.
    void add(std::vector<PackedMark>& marks);
    static constexpr std::size_t mostWaiting = 64;
    /// What came since the last call.
    [[nodiscard]] std::vector<PackedMark> take();

  private:
    std::mutex mutex_;
    std::vector<PackedMark> marks_;
};

/// The content of an entry as `entrySource` gives it, unpacked by a thread of its own some pieces ahead of
/// the reader. Beginnings of its blocks go to `marks` before the content behind them is given out. Reader and
/// marks must live as long as the source.
[[nodiscard]] ByteSource markedSource(const ZipReader& reader, std::size_t place, PackedMarks& marks);

/// Blocks of an entry, from one mark to another one before its last block.
struct PackedBlocks {
    std::string_view packed;  ///< all of the entry
    const PackedMark* from = nullptr;
    const PackedMark* to = nullptr;

    [[nodiscard]] std::uint64_t bytes() const { return to->bytes - from->bytes; }
    /// The checksum of their content.
    [[nodiscard]] std::uint32_t crc() const;
    /// Appends them to whole bytes, with an empty block that ends with a byte.
    void append(std::string& out) const;
};

/// The content of a deflated entry without that of the blocks, which come in their order and do not overlap.
/// The entry was found sound before, which is not looked at again. Reader and marks must live as long as the
/// source.
[[nodiscard]] ByteSource sourceWithout(const ZipReader& reader, std::size_t place,
                                       std::vector<PackedBlocks> blocks);

}  // namespace vexa::frontend
