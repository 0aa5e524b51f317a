// What a document file may hold. Files beyond these limits are neither written nor opened, so that a hostile
// file can take neither all memory nor minutes; see also memory_budget.h.
#pragma once

#include <cstddef>
#include <cstdint>

#include "frontend/package/xml_check.h"
#include "frontend/package/zip_entry.h"

namespace vexa::frontend::limits {

inline constexpr std::uint64_t fileBytes = 512ULL << 20;
/// Items that have an entry.
inline constexpr std::size_t items = 100'000;
/// The manifest, looks and pictures count too.
inline constexpr std::size_t entries = 2 * items + 1;
inline constexpr std::uint64_t entryBytes = 64ULL << 20;
/// Of all entries together, unpacked.
inline constexpr std::uint64_t totalBytes = 512ULL << 20;
inline constexpr std::size_t entryNameBytes = 255;
/// Tags and quotation marks of one entry: they bound the memory that the parsed XML takes.
inline constexpr std::size_t entryTags = 4'000'000;
inline constexpr std::size_t entryQuotes = 8'000'000;
/// How deep items nest.
inline constexpr std::size_t outlineDepth = 64;

/// The sealed content of a protected file is one entry, so the archive itself allows one as large as all.
inline constexpr ZipLimits archive{fileBytes, entries, totalBytes, totalBytes, entryNameBytes, false};
/// Items nest in the manifest, and nothing nests deeper.
inline constexpr XmlLimits xml{entryTags, entryQuotes, outlineDepth + 8};

/// The cost of a password's key, as a file may ask for it: passes over the memory, and bytes.
inline constexpr std::uint64_t keyOperations = 8;
inline constexpr std::uint64_t keyMemory = 256ULL << 20;

}  // namespace vexa::frontend::limits
