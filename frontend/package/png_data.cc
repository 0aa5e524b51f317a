#include "frontend/package/png_data.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace vexa::frontend {

namespace {

constexpr std::uint64_t mostBytes = std::uint64_t{1} << 30U;
constexpr std::size_t signatureLength = 8;
constexpr std::size_t headLength = 13;
/// Length and name before the data of a chunk; a checksum of four bytes is behind them.
constexpr std::size_t chunkBegin = 8;
constexpr std::size_t chunkAround = 12;

unsigned dataByteAt(std::string_view bytes, std::size_t place) {
    return static_cast<unsigned char>(bytes[place]);
}

std::uint64_t numberAt(std::string_view bytes, std::size_t place) {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < 4; ++i) number = number << 8U | dataByteAt(bytes, place + i);
    return number;
}

/// What comes first: "IHDR".
struct PngHead {
    std::uint64_t width = 0;
    std::uint64_t height = 0;
    std::uint64_t bitsOfPixel = 0;
    bool isInterlaced = false;
};

std::optional<PngHead> headOf(std::string_view data) {
    // By type of colour: gray, none, red with green and blue, palette, gray with alpha, none, all with alpha.
    constexpr std::array<unsigned, 7> channels{1, 0, 3, 1, 2, 0, 4};
    constexpr std::size_t depthPlace = 8;
    constexpr std::size_t colorPlace = 9;
    constexpr std::size_t interlacePlace = 12;
    if (data.size() != headLength || dataByteAt(data, colorPlace) >= channels.size()) return std::nullopt;
    const unsigned depth = dataByteAt(data, depthPlace);
    PngHead head{numberAt(data, 0), numberAt(data, 4),
                 std::uint64_t{depth} * channels[dataByteAt(data, colorPlace)],
                 dataByteAt(data, interlacePlace) != 0};
    const bool isDepth = depth == 1 || depth == 2 || depth == 4 || depth == 8 || depth == 16;
    if (!isDepth || head.bitsOfPixel == 0 || head.width == 0 || head.height == 0) return std::nullopt;
    return head;
}

/// Bytes of so many rows, each with one more that names its filter.
std::uint64_t bytesOfRows(std::uint64_t width, std::uint64_t height, std::uint64_t bitsOfPixel) {
    return width == 0 ? 0 : height * (1 + (width * bitsOfPixel + 7) / 8);
}

std::uint64_t bytesOf(const PngHead& head) {
    if (!head.isInterlaced) return bytesOfRows(head.width, head.height, head.bitsOfPixel);
    struct Pass {
        std::uint64_t x, y, xStep, yStep;
    };
    constexpr std::array<Pass, 7> passes{
        {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4}, {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}}};
    std::uint64_t bytes = 0;
    for (const Pass& pass : passes) {
        const std::uint64_t width = (head.width + pass.xStep - 1 - pass.x) / pass.xStep;
        const std::uint64_t height = (head.height + pass.yStep - 1 - pass.y) / pass.yStep;
        bytes += bytesOfRows(width, height, head.bitsOfPixel);
    }
    return bytes;
}

/// Counts what packed bytes unpack to.
class PixelCounter {
  public:
    PixelCounter() { isGood_ = inflateInit(&stream_) == Z_OK; }
    ~PixelCounter() { inflateEnd(&stream_); }
    PixelCounter(const PixelCounter&) = delete;
    PixelCounter& operator=(const PixelCounter&) = delete;
    PixelCounter(PixelCounter&&) = delete;
    PixelCounter& operator=(PixelCounter&&) = delete;

    /// False when they are damaged.
    bool add(std::string_view packed) {
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): the library only reads there
        stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
        stream_.avail_in = static_cast<uInt>(packed.size());
        while (isGood_ && !isAtEnd_ && stream_.avail_in > 0) {
            stream_.next_out = buffer_.data();
            stream_.avail_out = static_cast<uInt>(buffer_.size());
            const int result = inflate(&stream_, Z_NO_FLUSH);
            isAtEnd_ = result == Z_STREAM_END;
            isGood_ = isAtEnd_ || result == Z_OK;
            bytes_ += buffer_.size() - stream_.avail_out;
        }
        return isGood_;
    }

    [[nodiscard]] std::uint64_t bytes() const { return bytes_; }

  private:
    static constexpr std::size_t bufferBytes = std::size_t{64} << 10U;
    z_stream stream_{};
    std::vector<Bytef> buffer_ = std::vector<Bytef>(bufferBytes);
    std::uint64_t bytes_ = 0;
    bool isGood_ = false;
    bool isAtEnd_ = false;
};

}  // namespace

bool hasAllPixels(std::string_view png) {
    std::optional<PngHead> head;
    PixelCounter counter;
    png.remove_prefix(std::min(png.size(), signatureLength));
    while (png.size() >= chunkAround) {
        const std::uint64_t length = numberAt(png, 0);
        if (length > png.size() - chunkAround) return false;
        const std::string_view name = png.substr(4, 4);
        const std::string_view data = png.substr(chunkBegin, length);
        if (name == "IHDR") head = headOf(data);
        // Beyond these numbers a product would not be one.
        if (!head || head->width > mostBytes || head->height > mostBytes) return false;
        if (bytesOf(*head) > mostBytes) return true;
        if (name == "IDAT" && !counter.add(data)) return false;
        if (counter.bytes() >= bytesOf(*head)) return true;
        png.remove_prefix(chunkAround + length);
    }
    return false;
}

}  // namespace vexa::frontend
