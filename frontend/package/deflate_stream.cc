#include "frontend/package/deflate_stream.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "frontend/package/deflate_blocks.h"

namespace vexa::frontend {
namespace {

// The longest block that is not compressed.
constexpr std::size_t mostStored = 0xFFFF;
// A block without bytes that is the last one of all.
constexpr std::string_view lastBlock("\x01\x00\x00\xFF\xFF", 5);

/// Makes of whole deflated bytes a piece behind which others can stand: its last block is no longer the last
/// one, and it ends with a byte.
bool openEnd(std::string& packed) {
    const std::optional<DeflateBlock> last = lastDeflateBlock(packed);
    if (!last) {
        return false;
    }
    const auto clear = [&packed](std::uint64_t bit) {
        char& byte = packed[bit / 8];
        byte = static_cast<char>(static_cast<unsigned char>(byte) & ~(1U << (bit % 8)));
    };
    clear(last->begin);
    packed.resize((last->end + 7) / 8);
    for (std::uint64_t bit = last->end; bit < packed.size() * 8; ++bit) {
        clear(bit);
    }
    appendEmptyBlock(packed, packed.size() * 8 - last->end);
    return true;
}

void appendStored(std::string& packed, std::string_view bytes) {
    while (!bytes.empty()) {
        const std::string_view block = bytes.substr(0, mostStored);
        const auto length = static_cast<unsigned>(block.size());
        packed += '\0';
        for (const unsigned number : {length, ~length}) {
            packed += static_cast<char>(number & 0xFFU);
            packed += static_cast<char>(number >> 8U & 0xFFU);
        }
        packed += block;
        bytes.remove_prefix(block.size());
    }
}

/// A piece as it stands in the stream, others before and behind it.
PackageResult packPiece(std::string_view piece, int level, std::string& packed) {
    Deflater deflater(level);
    packed.clear();
    if (!deflater.pack(piece, packed)) {
        appendStored(packed, piece);
        return {};
    }
    return openEnd(packed) ? PackageResult() : PackageResult(PackageProblem::noMemory);
}

}  // namespace

DeflateStream::DeflateStream(std::uint64_t limit, unsigned threads, int level)
    : queue_(threads, noDeflateLevel), level_(level), limit_(limit) {}

PackageResult DeflateStream::write(std::string_view bytes) {
    while (result_ && !bytes.empty()) {
        const std::string_view piece = bytes.substr(0, pieceBytes - waiting_.size());
        waiting_ += piece;
        bytes.remove_prefix(piece.size());
        if (waiting_.size() == pieceBytes) {
            result_ = pushPiece();
        }
    }
    return result_;
}

PackageResult DeflateStream::pushPiece() {
    bytes_ += waiting_.size();
    if (bytes_ > limit_) {
        return {PackageProblem::beyondLimits, "the size of one item"_text};
    }
    crc_ = crcOf(waiting_, crc_);
    auto job = std::make_unique<PackingJob>();
    job->limit = 2 * pieceBytes;
    job->compressed = false;  // it is by then
    auto piece = std::make_shared<const std::string>(std::exchange(waiting_, {}));
    job->make = [piece, level = level_](std::string& content) { return packPiece(*piece, level, content); };
    queue_.push(std::move(job));
    // Enough that no core is idle.
    return queue_.size() > 2 * queue_.threads() + 4 ? takePiece() : PackageResult();
}

PackageResult DeflateStream::copy(const PackedBlocks& blocks) {
    if (result_ && !waiting_.empty()) {
        result_ = pushPiece();
    }
    while (result_ && !queue_.empty()) {
        result_ = takePiece();
    }
    if (result_ && bytes_ + blocks.bytes() > limit_) {
        result_ = {PackageProblem::beyondLimits, "the size of one item"_text};
    }
    if (result_) {
        bytes_ += blocks.bytes();
        crc_ = crcTogether(crc_, blocks.crc(), blocks.bytes());
        packed_.reserve(packed_.size() + blocks.packed.size() + 2 * pieceBytes);
        blocks.append(packed_);
    }
    return result_;
}

PackageResult DeflateStream::takePiece() {
    const std::unique_ptr<PackingJob> job = queue_.pop();
    if (!job->result) {
        return job->result;
    }
    packed_ += job->bytes;
    return {};
}

PackageResult DeflateStream::finish(ZipEntry& entry, std::string& packed) {
    if (result_ && !waiting_.empty()) {
        result_ = pushPiece();
    }
    while (result_ && !queue_.empty()) {
        result_ = takePiece();
    }
    packed_ += lastBlock;
    entry.method = zipDeflated;
    entry.crc = crc_;
    entry.bytes = bytes_;
    entry.packedBytes = packed_.size();
    packed = std::move(packed_);
    return result_;
}

}  // namespace vexa::frontend
