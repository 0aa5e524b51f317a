// Compresses one entry of an archive that comes piece by piece, however long it is: what is held is some
// pieces and the packed bytes. Pieces are compressed on all cores, and the bytes do not depend on how many.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "frontend/package/marked_source.h"
#include "frontend/package/package_result.h"
#include "frontend/package/packing_queue.h"
#include "frontend/package/zip_entry.h"

namespace vexa::frontend {

class DeflateStream {
  public:
    /// `threads` is how many compress; 0 is one a core. More than `limit` bytes are a failure.
    explicit DeflateStream(std::uint64_t limit, unsigned threads = 0, int level = usualDeflateLevel);

    /// The first failure stays the result of every later call.
    PackageResult write(std::string_view bytes);
    /// Puts blocks in that are packed already. What was written before must end with what stood before them,
    /// `packedWindow` bytes of it.
    PackageResult copy(const PackedBlocks& blocks);
    /// Sets method, checksum and sizes of `entry`, and gives the packed bytes for `ZipWriter::addPacked`.
    PackageResult finish(ZipEntry& entry, std::string& packed);

    /// Pieces that are compressed by themselves.
    static constexpr std::size_t pieceBytes = 1U << 20U;

  private:
    PackageResult pushPiece();
    PackageResult takePiece();

    PackageResult result_;
    PackingQueue queue_;
    int level_;
    std::uint64_t limit_;
    std::string waiting_;
    std::string packed_;
    std::uint64_t bytes_ = 0;
    std::uint32_t crc_ = 0;
};

}  // namespace vexa::frontend
