// Compound files (OLE2): storages and streams in one file, as older office programs write them. Read from
// memory, hostile ones too, and written so that the same entries always give the same bytes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/package/package_result.h"

namespace vexa::frontend {

/// What a compound file may hold. The same limits bound reading and writing.
struct CompoundLimits {
    std::uint64_t fileBytes = 512ULL << 20;
    std::size_t entries = 65'536;
};

/// A storage, which holds others, or a stream, which holds bytes.
struct CompoundEntry {
    std::u16string name;  ///< 31 units at most; of the root nobody's concern
    bool isStorage = false;
    std::size_t parent = 0;  ///< place of the storage that it stands in; the root's own is 0
    std::string content;     ///< of a stream
    std::array<char, 16> classId{};
    std::uint32_t state = 0;  ///< for whoever writes the storage to use
    std::uint64_t created = 0;
    std::uint64_t modified = 0;
};

/// The entries of one file, the root at place 0. Places stay as long as the object.
class CompoundFile {
  public:
    /// One with nothing but its root.
    CompoundFile();

    /// Whether the bytes begin as a compound file does; eight are enough.
    [[nodiscard]] static bool isOne(std::string_view bytes);

    /// Reads a whole file. `bytes` are not needed afterwards. Refuses what is none (`notAnArchive`), is
    /// beyond the limits (`tooLarge`), or is cut off, contradicts itself, has chains that meet or run in
    /// circles, or two entries of one name (`damaged`). After a failure there is nothing but the root. Takes
    /// no more memory than a few times the file's size, whatever the file says.
    PackageResult read(std::string_view bytes, const CompoundLimits& limits = {});

    /// Writes the file: times and identifiers are those of the entries, so nothing depends on the clock.
    PackageResult write(const ByteSink& sink, const CompoundLimits& limits = {}) const;

    [[nodiscard]] std::size_t count() const { return entries_.size(); }
    [[nodiscard]] const CompoundEntry& entry(std::size_t place) const { return entries_[place]; }
    /// Name and parent are not to be changed.
    [[nodiscard]] CompoundEntry& entry(std::size_t place) { return entries_[place]; }

    /// The entry of this path (UTF-8) from the root, names divided by slashes. Names are compared without
    /// regard to case.
    [[nodiscard]] std::optional<std::size_t> find(std::string_view path) const;

    /// Adds an entry to the storage `parent`, which must have none of that name. The name (UTF-8) has 1 to 31
    /// units.
    std::size_t addStorage(std::size_t parent, std::string_view name);
    std::size_t addStream(std::size_t parent, std::string_view name, std::string content);

  private:
    friend class CompoundReader;
    std::vector<CompoundEntry> entries_;
};

/// The order of names in a storage: shorter ones first, then by their capital letters.
[[nodiscard]] bool compoundNameLess(const std::u16string& left, const std::u16string& right);

}  // namespace vexa::frontend
