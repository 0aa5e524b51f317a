// Compressing and decompressing whole texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct libdeflate_compressor;
struct libdeflate_decompressor;

namespace vexa::frontend {

/// How thoroughly texts are compressed. The levels above the usual one gain a few percent and take twice the
/// time; the swift one makes of XML what zlib makes of it at its usual level, in half the time of the usual
/// one; the quick one takes less still and makes numbers a tenth larger.
inline constexpr int usualDeflateLevel = 6;
inline constexpr int swiftDeflateLevel = 4;
inline constexpr int quickDeflateLevel = 2;
inline constexpr int noDeflateLevel = 0;

/// Compresses one text after the other; for one thread at a time.
class Deflater {
  public:
    explicit Deflater(int level = usualDeflateLevel);

    /// False when the text does not become smaller, or memory is short; `packed` is then as it was.
    [[nodiscard]] bool pack(std::string_view text, std::string& packed);

  private:
    std::unique_ptr<libdeflate_compressor, void (*)(libdeflate_compressor*)> compressor_;
    std::unique_ptr<char[]> scratch_;
    std::size_t scratchBytes_ = 0;
};

class Inflater {
  public:
    Inflater();

    /// Unpacks exactly `bytes` bytes from all of `packed`; false when that is not what it holds. `text` is
    /// then of no use.
    [[nodiscard]] bool unpack(std::string_view packed, std::size_t bytes, std::string& text);

  private:
    std::unique_ptr<libdeflate_decompressor, void (*)(libdeflate_decompressor*)> decompressor_;
};

/// The most that deflated bytes can unpack to.
[[nodiscard]] std::uint64_t mostUnpacked(std::uint64_t packedBytes);

/// The checksum that zip archives keep of an entry; `before` is that of what stands before `text`.
[[nodiscard]] std::uint32_t crcOf(std::string_view text, std::uint32_t before = 0);

/// The checksum that stands behind deflated bytes in the form of zlib.
[[nodiscard]] std::uint32_t adlerOf(std::string_view text);

}  // namespace vexa::frontend
