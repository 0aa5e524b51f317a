// Reads a zip archive that may be hostile. Names and sizes are checked before anything is unpacked.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "frontend/store/store_result.h"

struct zip;

namespace vexa::frontend {

class ZipReader {
  public:
    ZipReader();
    ~ZipReader();
    ZipReader(const ZipReader&) = delete;
    ZipReader& operator=(const ZipReader&) = delete;

    /// `bytes` must live as long as the reader. Refuses what is no archive, is cut off or contradicts itself,
    /// is beyond the limits, or has entries whose names are doubled or would leave a folder.
    StoreResult open(std::string_view bytes);

    [[nodiscard]] std::size_t count() const { return entries_.size(); }
    /// The place of an entry, or nothing.
    [[nodiscard]] std::optional<std::uint64_t> find(const std::string& name) const;
    /// Unpacks an entry, never more bytes than it declares; refuses one that declares more than `limit`.
    StoreResult read(std::uint64_t place, std::uint64_t limit, std::string& content) const;

  private:
    StoreResult checkEntries();

    std::unique_ptr<zip, void (*)(zip*)> archive_;
    std::map<std::string, std::uint64_t> entries_;
};

/// Whether an entry of that name would stay inside a folder that the archive is unpacked into, on every
/// system.
[[nodiscard]] bool isSafeEntryName(std::string_view name);

}  // namespace vexa::frontend
