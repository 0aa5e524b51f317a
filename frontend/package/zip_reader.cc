#include "frontend/package/zip_reader.h"

#include <algorithm>
#include <new>
#include <numeric>

#include "frontend/package/deflate.h"
#include "frontend/package/zip_format.h"

namespace vexa::frontend {

namespace {

using zipformat::centralBytes;
using zipformat::centralSignature;
using zipformat::endBytes;
using zipformat::endSignature;
using zipformat::flagEncrypted;
using zipformat::flagSizesBehind;
using zipformat::localBytes;
using zipformat::localSignature;
using zipformat::RecordReader;
using zipformat::seeWide16;
using zipformat::seeWide32;
using zipformat::wideEndBytes;
using zipformat::wideEndSignature;
using zipformat::wideLocatorBytes;
using zipformat::wideLocatorSignature;

PackageResult damagedArchive() { return {PackageProblem::damaged, "the archive"_text}; }

bool beginsWith(std::string_view bytes, std::uint32_t signature) {
    return bytes.size() >= 4 && RecordReader(bytes).four() == signature;
}

// Sizes behind an entry: with or without a signature, in four bytes or in eight.
bool isRoomForSizes(std::uint64_t gap) { return gap == 12 || gap == 16 || gap == 20 || gap == 24; }

}  // namespace

PackageResult ZipReader::open(std::string_view bytes) {
    bytes_ = bytes;
    PackageResult result;
    try {
        result = readAll();
    } catch (const std::bad_alloc&) {
        result = PackageProblem::noMemory;
    }
    if (!result) {
        entries_.clear();
        places_.clear();
    }
    return result;
}

PackageResult ZipReader::readAll() {
    Directory directory;
    if (PackageResult result = findDirectory(directory); !result) {
        return result;
    }
    if (directory.entries > limits_.entries) {
        return {PackageProblem::tooLarge, "the number of entries"_text};
    }
    if (PackageResult result = readDirectory(directory); !result) {
        return result;
    }
    return placeEntries(directory.offset) ? PackageResult() : damagedArchive();
}

// The end record is the last thing of an archive but for a comment, whose length it tells.
PackageResult ZipReader::findDirectory(Directory& directory) const {
    constexpr std::size_t longestComment = 0xFFFF;
    PackageResult none =
        beginsWith(bytes_, localSignature) ? damagedArchive() : PackageResult(PackageProblem::notAnArchive);
    if (bytes_.size() < endBytes) {
        return none;
    }
    const std::size_t last = bytes_.size() - endBytes;
    const std::size_t first = last > longestComment ? last - longestComment : 0;
    for (std::size_t at = last + 1; at-- > first;) {
        if (!beginsWith(bytes_.substr(at), endSignature)) {
            continue;
        }
        RecordReader record(bytes_.substr(at + 4));
        const std::uint16_t disk = record.two();
        const std::uint16_t diskOfDirectory = record.two();
        const std::uint16_t entriesOfDisk = record.two();
        directory.entries = record.two();
        directory.bytes = record.four();
        directory.offset = record.four();
        if (record.two() != last - at) {
            continue;
        }
        const bool wide = readWideEnd(at, directory);
        const std::size_t end = at - (wide ? wideEndBytes + wideLocatorBytes : 0);
        const bool whole = wide || (disk == 0 && diskOfDirectory == 0 && entriesOfDisk == directory.entries);
        const bool fits = directory.offset <= end && end - directory.offset == directory.bytes &&
                          directory.entries <= directory.bytes / centralBytes;
        return whole && fits ? PackageResult() : damagedArchive();
    }
    return none;
}

// More entries than the end record can count stand in a wide one before it. Sizes that would need one are
// beyond every limit.
bool ZipReader::readWideEnd(std::size_t end, Directory& directory) const {
    if (end < wideEndBytes + wideLocatorBytes ||
        !beginsWith(bytes_.substr(end - wideLocatorBytes), wideLocatorSignature)) {
        return false;
    }
    const std::size_t at = end - wideLocatorBytes - wideEndBytes;
    RecordReader locator(bytes_.substr(end - wideLocatorBytes + 8));
    RecordReader record(bytes_.substr(at));
    if (locator.eight() != at || record.four() != wideEndSignature || record.eight() != wideEndBytes - 12) {
        return false;
    }
    record.skip(12);  // versions and numbers of disks
    const std::uint64_t entriesOfDisk = record.eight();
    const Directory wide{record.eight(), record.eight(), record.eight()};
    // What the narrow record can say, it says, too.
    const auto agree = [](std::uint64_t narrow, std::uint64_t full, std::uint64_t most) {
        return narrow == full || narrow == most;
    };
    const bool same = entriesOfDisk == wide.entries && agree(directory.entries, wide.entries, seeWide16) &&
                      agree(directory.bytes, wide.bytes, seeWide32) &&
                      agree(directory.offset, wide.offset, seeWide32);
    if (same) {
        directory = wide;
    }
    return same;
}

PackageResult ZipReader::readDirectory(const Directory& directory) {
    std::string_view central = bytes_.substr(directory.offset, directory.bytes);
    entries_.clear();
    places_.clear();
    entries_.reserve(directory.entries);
    places_.reserve(directory.entries);
    flags_.assign(directory.entries, 0);
    contentAt_.assign(directory.entries, 0);
    std::uint64_t total = 0;
    while (entries_.size() < directory.entries) {
        if (PackageResult result = readCentral(central); !result) {
            return result;
        }
        const ZipEntry& entry = entries_.back();
        if (PackageResult result = checkEntry(entry, total); !result) {
            return result;
        }
        if (!places_.emplace(entry.name, entries_.size() - 1).second) {
            return damagedArchive();
        }
    }
    return central.empty() ? PackageResult() : damagedArchive();
}

/// Reads one record of the directory and takes it off.
PackageResult ZipReader::readCentral(std::string_view& central) {
    if (central.size() < centralBytes || !beginsWith(central, centralSignature)) {
        return damagedArchive();
    }
    RecordReader record(central.substr(4));
    ZipEntry& entry = entries_.emplace_back();
    entry.madeBy = record.two();
    record.skip(2);  // the version needed
    const std::uint16_t flags = record.two();
    flags_[entries_.size() - 1] = flags;
    entry.method = record.two();
    entry.time = record.two();
    entry.date = record.two();
    entry.crc = record.four();
    entry.packedBytes = record.four();
    entry.bytes = record.four();
    const std::size_t nameBytes = record.two();
    const std::size_t behind = std::size_t{record.two()} + record.two();
    const std::uint16_t disk = record.two();
    record.skip(2);  // whether it is text
    entry.attributes = record.four();
    entry.offset = record.four();
    if ((flags & flagEncrypted) != 0 || disk != 0 || entry.offset == seeWide32 ||
        central.size() < centralBytes + nameBytes + behind) {
        return damagedArchive();
    }
    entry.name = central.substr(centralBytes, nameBytes);
    central.remove_prefix(centralBytes + nameBytes + behind);
    return {};
}

PackageResult ZipReader::checkEntry(const ZipEntry& entry, std::uint64_t& total) const {
    if (!isSafeEntryName(entry.name, limits_)) {
        return PackageResult::named(PackageProblem::unsafeName, entry.name);
    }
    total += entry.bytes;
    if (total > limits_.totalBytes || entry.bytes > limits_.entryBytes) {
        return {PackageProblem::tooLarge, "what it unpacks to"_text};
    }
    const bool folder = entry.name.back() == '/';
    const bool sizesAgree = entry.method != zipStored || entry.bytes == entry.packedBytes;
    return sizesAgree && (!folder || entry.bytes == 0) ? PackageResult() : damagedArchive();
}

/// Finds out where the entries' bytes stand: one behind the other, up to `end`, with nothing between them.
bool ZipReader::placeEntries(std::uint64_t end) {
    std::vector<std::size_t> order(entries_.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [this](std::size_t left, std::size_t right) {
        return entries_[left].offset < entries_[right].offset;
    });
    const std::uint64_t first = order.empty() ? end : entries_[order.front()].offset;
    for (std::size_t i = 0; i < order.size(); ++i) {
        const bool last = i + 1 == order.size();
        if (!placeEntry(order[i], last ? end : entries_[order[i + 1]].offset)) {
            return false;
        }
    }
    return first == 0;
}

/// The same for one entry, whose next neighbour begins at `end`. Its own header must say the same as the
/// directory.
bool ZipReader::placeEntry(std::size_t place, std::uint64_t end) {
    const ZipEntry& entry = entries_[place];
    if (entry.offset > end || end > bytes_.size() || end - entry.offset < localBytes) {
        return false;
    }
    const std::string_view local = bytes_.substr(entry.offset, end - entry.offset);
    RecordReader record(local);
    const bool signature = record.four() == localSignature;
    record.skip(2);  // the version needed
    const std::uint16_t flags = record.two();
    const std::uint16_t method = record.two();
    record.skip(4);  // the time
    const std::uint32_t crc = record.four();
    const std::uint32_t packedBytes = record.four();
    const std::uint32_t bytes = record.four();
    const std::size_t nameBytes = record.two();
    const std::size_t content = localBytes + nameBytes + record.two();
    constexpr std::uint16_t compared = flagEncrypted | flagSizesBehind;
    if (!signature || ((flags ^ flags_[place]) & compared) != 0 || method != entry.method ||
        local.size() < content || local.substr(localBytes, nameBytes) != entry.name ||
        local.size() - content < entry.packedBytes) {
        return false;
    }
    contentAt_[place] = entry.offset + content;
    const std::uint64_t gap = local.size() - content - entry.packedBytes;
    if ((flags & flagSizesBehind) != 0) {
        return isRoomForSizes(gap);
    }
    return gap == 0 && crc == entry.crc && (packedBytes == entry.packedBytes || packedBytes == seeWide32) &&
           (bytes == entry.bytes || bytes == seeWide32);
}

std::optional<std::size_t> ZipReader::find(std::string_view name) const {
    const auto found = places_.find(name);
    return found == places_.end() ? std::nullopt : std::optional(found->second);
}

std::string_view ZipReader::packed(std::size_t place) const {
    return bytes_.substr(contentAt_[place], entries_[place].packedBytes);
}

PackageResult ZipReader::read(std::size_t place, std::string& content, std::uint64_t limit) const {
    const ZipEntry& entry = entries_[place];
    content.clear();
    if (entry.bytes > limit) {
        return {PackageProblem::tooLarge, "what it unpacks to"_text};
    }
    if (entry.method != zipStored && entry.method != zipDeflated) {
        return {PackageProblem::otherCompression, "method ^1"_text, {std::to_string(entry.method)}};
    }
    bool whole = false;
    try {
        if (entry.method == zipStored) {
            content = packed(place);
            whole = true;
        } else if (entry.bytes <= mostUnpacked(entry.packedBytes)) {
            thread_local Inflater inflater;
            whole = inflater.unpack(packed(place), entry.bytes, content);
        }
    } catch (const std::bad_alloc&) {
        return PackageProblem::noMemory;
    }
    if (whole && crcOf(content) == entry.crc) {
        return {};
    }
    content.clear();
    return {PackageProblem::damaged, "the entry ^1"_text, {entry.name}};
}

}  // namespace vexa::frontend
