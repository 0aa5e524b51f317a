// Finds the bytes " & ' < > in a text, many bytes at a time.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vexa {

/// Looks at whole blocks of 64 bytes and writes a mask for each: bit i is set when byte i is special.
using MarkSpecialBytes = void (*)(const char* text, std::size_t blocks, std::uint64_t* masks);

/// The way that works on every processor, and the fastest one that this processor has.
/// @{
void markSpecialBytesAnywhere(const char* text, std::size_t blocks, std::uint64_t* masks);
[[nodiscard]] MarkSpecialBytes fastestMarkSpecialBytes();
/// @}

/// The places of the special bytes of a text, from left to right. The text must outlive the object.
class SpecialBytes {
  public:
    // Short texts would pay for clearing it.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): `masks_` is written before it is read
    explicit SpecialBytes(std::string_view text) : text_(text) {}

    /// The next place, or the text's size when there is none left.
    [[nodiscard]] std::size_t next() {
        while (mask_ == 0) {
            if (++block_ >= blocks_ && !markMore()) {
                return text_.size();
            }
            mask_ = masks_[block_];
        }
        const auto bit = static_cast<std::size_t>(__builtin_ctzll(mask_));
        mask_ &= mask_ - 1;
        return from_ + block_ * kBlock + bit;
    }

  private:
    /// Bytes that one mask tells of.
    static constexpr std::size_t kBlock = 64;
    static constexpr std::size_t kBlocksAtOnce = 32;

    /// Looks at the next bytes; false at the end of the text.
    bool markMore();

    std::string_view text_;
    std::size_t from_ = 0;    ///< place that the first mask tells of
    std::size_t marked_ = 0;  ///< bytes looked at
    std::size_t block_ = 0;
    std::size_t blocks_ = 0;
    std::uint64_t mask_ = 0;
    std::array<std::uint64_t, kBlocksAtOnce> masks_;
};

}  // namespace vexa
