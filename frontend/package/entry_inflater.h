// Unpacks deflated bytes piece by piece, and can go on from the beginning of any block.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct z_stream_s;

namespace vexa::frontend {

/// How far blocks look back for what they repeat, bytes of content.
inline constexpr std::size_t packedWindow = 32U << 10U;

/// The beginning of a block: blocks between two such places can be copied without being unpacked.
struct PackedMark {
    std::uint64_t bits = 0;   ///< of packed bytes before it
    std::uint64_t bytes = 0;  ///< of content before it
    std::uint32_t crc = 0;    ///< of that content
    std::string window;       ///< its last `packedWindow` bytes, or all of it
};

class EntryInflater {
  public:
    /// `packed` must live as long.
    explicit EntryInflater(std::string_view packed);
    ~EntryInflater();
    EntryInflater(const EntryInflater&) = delete;
    EntryInflater& operator=(const EntryInflater&) = delete;
    EntryInflater(EntryInflater&&) = delete;
    EntryInflater& operator=(EntryInflater&&) = delete;

    /// Goes on from a mark of the same bytes, as if everything before it had been unpacked. False where
    /// memory is short.
    [[nodiscard]] bool goTo(const PackedMark& mark);
    /// The next piece, good until the next call; empty at the end. Beginnings of blocks in it go to `marks`,
    /// where that is given, at least `marksApart` bytes of content apart. False where the bytes cannot be
    /// unpacked, end too early, or are followed by others.
    [[nodiscard]] bool next(std::string_view& piece, std::vector<PackedMark>* marks = nullptr);

    /// Of the content up to the end of the piece; after `goTo` the checksum is that of the mark and what
    /// came since.
    [[nodiscard]] std::uint64_t bytes() const { return bytes_; }
    [[nodiscard]] std::uint32_t crc() const { return crc_; }
    [[nodiscard]] bool isAtEnd() const { return isAtEnd_; }

    static constexpr std::size_t marksApart = 256U << 10U;

  private:
    bool inflatePiece(std::vector<PackedMark>* marks);
    void count();
    void mark(std::vector<PackedMark>& marks);

    std::string_view packed_;
    std::size_t taken_ = 0;  ///< of `packed_`
    std::unique_ptr<z_stream_s> stream_;
    bool isOpen_ = false;
    bool isAtEnd_ = false;
    std::string buffer_;       ///< the end of the last piece, and the present one
    std::size_t begin_ = 0;    ///< of the present piece
    std::size_t end_ = 0;      ///< of what was unpacked
    std::size_t counted_ = 0;  ///< up to where checksum and number of bytes are
    std::uint64_t bytes_ = 0;
    std::uint32_t crc_ = 0;
    std::uint64_t lastMark_ = 0;  ///< bytes of content before it
};

/// The checksum of one content behind another one.
[[nodiscard]] std::uint32_t crcTogether(std::uint32_t first, std::uint32_t second,
                                        std::uint64_t bytesOfSecond);

}  // namespace vexa::frontend
