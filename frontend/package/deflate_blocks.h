// Where the blocks of deflated bytes stand, found without unpacking them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vexa::frontend {

/// Where a block begins and ends, in bits from the beginning of the bytes.
struct DeflateBlock {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
};

/// The last block of deflated bytes; nothing where they are none, or are cut off.
[[nodiscard]] std::optional<DeflateBlock> lastDeflateBlock(std::string_view packed);

/// Appends an uncompressed block without bytes, which ends with a byte. Of the last byte of `packed` so many
/// bits, the upper ones, are free; they are zeros.
void appendEmptyBlock(std::string& packed, std::uint64_t freeBits);

}  // namespace vexa::frontend
