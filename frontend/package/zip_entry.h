// What zip archives hold, and how much of it is taken.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vexa::frontend {

/// What an archive may hold. The same limits bound reading and writing, so that what is written can be read.
struct ZipLimits {
    /// Of the whole archive; whoever reads a file looks at it before the archive is opened.
    std::uint64_t fileBytes = 512ULL << 20;
    std::size_t entries = 100'000;
    /// Of one entry, unpacked.
    std::uint64_t entryBytes = 512ULL << 20;
    /// Of all entries together, unpacked.
    std::uint64_t totalBytes = 512ULL << 20;
    std::size_t nameBytes = 255;
    /// Whether names may end with a slash: entries for folders, which other programs write. They are empty.
    bool folders = false;
};

/// The methods of compression that are known.
inline constexpr std::uint16_t zipStored = 0;
inline constexpr std::uint16_t zipDeflated = 8;

/// One entry as the archive's directory describes it.
struct ZipEntry {
    std::string name;  ///< with slashes, UTF-8
    std::uint16_t method = zipDeflated;
    std::uint32_t crc = 0;          ///< of the unpacked bytes
    std::uint64_t packedBytes = 0;  ///< in the archive
    std::uint64_t bytes = 0;        ///< unpacked
    std::uint16_t time = 0;         ///< as DOS writes it
    std::uint16_t date = (1U << 5U) | 1U;
    std::uint16_t madeBy = (3U << 8U) | 20U;  ///< the system and version that wrote it: what attributes mean
    std::uint32_t attributes = 0100644U << 16U;
    std::uint64_t offset = 0;  ///< of the entry in the archive
};

/// Whether an entry of that name would stay inside a folder that the archive is unpacked into, on every
/// system.
[[nodiscard]] bool isSafeEntryName(std::string_view name, const ZipLimits& limits = {});

}  // namespace vexa::frontend
