// The records of the zip format, for its reader and its writer. Numbers are little-endian.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vexa::frontend::zipformat {

inline constexpr std::uint32_t localSignature = 0x04034b50;
inline constexpr std::uint32_t centralSignature = 0x02014b50;
inline constexpr std::uint32_t endSignature = 0x06054b50;
inline constexpr std::uint32_t wideEndSignature = 0x06064b50;
inline constexpr std::uint32_t wideLocatorSignature = 0x07064b50;

/// Of the records without the texts behind them.
inline constexpr std::size_t localBytes = 30;
inline constexpr std::size_t centralBytes = 46;
inline constexpr std::size_t endBytes = 22;
inline constexpr std::size_t wideEndBytes = 56;
inline constexpr std::size_t wideLocatorBytes = 20;

/// A number that says that the real one stands in a wide record.
inline constexpr std::uint16_t seeWide16 = 0xFFFF;
inline constexpr std::uint32_t seeWide32 = 0xFFFFFFFF;

inline constexpr std::uint16_t flagEncrypted = 1U << 0U;
inline constexpr std::uint16_t flagSizesBehind = 1U << 3U;
inline constexpr std::uint16_t flagUtf8 = 1U << 11U;

/// Reads one record from its beginning; there must be bytes enough.
class RecordReader {
  public:
    explicit RecordReader(std::string_view bytes) : bytes_(bytes) {}

    [[nodiscard]] std::uint16_t two() { return static_cast<std::uint16_t>(number(2)); }
    [[nodiscard]] std::uint32_t four() { return static_cast<std::uint32_t>(number(4)); }
    [[nodiscard]] std::uint64_t eight() { return number(8); }
    void skip(std::size_t count) { bytes_.remove_prefix(count); }

  private:
    std::uint64_t number(std::size_t count) {
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < count; ++i) {
            value |= std::uint64_t{static_cast<unsigned char>(bytes_[i])} << (8 * i);
        }
        bytes_.remove_prefix(count);
        return value;
    }

    std::string_view bytes_;
};

/// Appends one record to a text.
class RecordWriter {
  public:
    explicit RecordWriter(std::string& out) : out_(out) {}

    RecordWriter& two(std::uint64_t value) { return number(value, 2); }
    RecordWriter& four(std::uint64_t value) { return number(value, 4); }
    RecordWriter& eight(std::uint64_t value) { return number(value, 8); }
    RecordWriter& text(std::string_view text) {
        out_ += text;
        return *this;
    }

  private:
    RecordWriter& number(std::uint64_t value, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            out_ += static_cast<char>(value >> (8 * i) & 0xFFU);
        }
        return *this;
    }

    std::string& out_;
};

}  // namespace vexa::frontend::zipformat
