// Reads zip archives from memory, hostile ones too: nothing is unpacked before it was asked for, and never
// more than it declares.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "frontend/package/package_result.h"
#include "frontend/package/zip_entry.h"

namespace vexa::frontend {

class ZipReader {
  public:
    explicit ZipReader(const ZipLimits& limits = {}) : limits_(limits) {}

    /// `bytes` must live as long as the reader. Refuses what is no archive, is cut off, contradicts itself,
    /// has anything before, between or behind its records, is encrypted or beyond the limits, or has entries
    /// that overlap or whose names are doubled or would leave a folder. After a failure there are no entries.
    PackageResult open(std::string_view bytes);

    /// Entries in the order of the archive's directory.
    [[nodiscard]] std::size_t count() const { return entries_.size(); }
    [[nodiscard]] const ZipEntry& entry(std::size_t place) const { return entries_[place]; }
    [[nodiscard]] std::optional<std::size_t> find(std::string_view name) const;

    /// Unpacks an entry; refuses one that declares more than `limit`. May be called by several threads.
    PackageResult read(std::size_t place, std::string& content,
                       std::uint64_t limit = std::numeric_limits<std::uint64_t>::max()) const;
    /// The entry's bytes as they stand in the archive, for `ZipWriter::addPacked`. They are not checked.
    [[nodiscard]] std::string_view packed(std::size_t place) const;

  private:
    struct Directory {
        std::uint64_t entries = 0;
        std::uint64_t bytes = 0;
        std::uint64_t offset = 0;
    };
    PackageResult readAll();
    PackageResult findDirectory(Directory& directory) const;
    bool readWideEnd(std::size_t end, Directory& directory) const;
    PackageResult readDirectory(const Directory& directory);
    PackageResult readCentral(std::string_view& central);
    PackageResult checkEntry(const ZipEntry& entry, std::uint64_t& total) const;
    bool placeEntries(std::uint64_t end);
    bool placeEntry(std::size_t place, std::uint64_t end);

    ZipLimits limits_;
    std::string_view bytes_;
    std::vector<ZipEntry> entries_;
    std::vector<std::uint16_t> flags_;      ///< by place
    std::vector<std::uint64_t> contentAt_;  ///< by place: where the packed bytes begin
    std::unordered_map<std::string_view, std::size_t> places_;
};

}  // namespace vexa::frontend
