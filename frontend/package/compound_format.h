// The records of compound files, for their reader and their writer. Numbers are little-endian.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vexa::frontend::compoundformat {

inline constexpr std::string_view signature{"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8};
inline constexpr std::size_t headerBytes = 512;
/// Places of sectors of the FAT that the header itself has room for.
inline constexpr std::size_t headerFatSectors = 109;
inline constexpr std::size_t headerFatAt = 76;
inline constexpr std::size_t entryBytes = 128;
inline constexpr std::size_t nameBytes = 64;

/// What is smaller stands in the mini stream, in sectors of its own size.
inline constexpr std::uint32_t miniCutoff = 4096;
inline constexpr std::size_t miniSectorBytes = 64;
inline constexpr std::uint16_t miniShift = 6;
/// Of versions 3 and 4.
inline constexpr std::uint16_t usualShift = 9;
inline constexpr std::uint16_t wideShift = 12;
inline constexpr std::size_t sectorBytes = 1U << usualShift;

/// How many pieces of that size hold so many bytes.
[[nodiscard]] constexpr std::size_t piecesOf(std::uint64_t bytes, std::size_t piece) {
    return static_cast<std::size_t>((bytes + piece - 1) / piece);
}

inline constexpr std::uint32_t difatSector = 0xFFFFFFFC;
inline constexpr std::uint32_t fatSector = 0xFFFFFFFD;
inline constexpr std::uint32_t endOfChain = 0xFFFFFFFE;
inline constexpr std::uint32_t freeSector = 0xFFFFFFFF;
inline constexpr std::uint32_t noEntry = 0xFFFFFFFF;

inline constexpr unsigned char typeStorage = 1;
inline constexpr unsigned char typeStream = 2;
inline constexpr unsigned char typeRoot = 5;

}  // namespace vexa::frontend::compoundformat
