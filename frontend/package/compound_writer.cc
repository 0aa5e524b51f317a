#include <algorithm>
#include <map>
#include <utility>

#include "frontend/package/compound_file.h"
#include "frontend/package/compound_format.h"
#include "frontend/package/zip_format.h"

namespace vexa::frontend {

namespace {

using compoundformat::difatSector;
using compoundformat::endOfChain;
using compoundformat::entryBytes;
using compoundformat::fatSector;
using compoundformat::freeSector;
using compoundformat::headerFatSectors;
using compoundformat::miniCutoff;
using compoundformat::miniSectorBytes;
using compoundformat::nameBytes;
using compoundformat::noEntry;
using compoundformat::piecesOf;
using compoundformat::sectorBytes;
using zipformat::RecordWriter;

constexpr std::size_t numbersOfSector = sectorBytes / 4;
constexpr unsigned char red = 0;
constexpr unsigned char black = 1;

/// Where an entry stands in the tree of its storage, and where its bytes are.
struct Placed {
    std::uint32_t left = noEntry;
    std::uint32_t right = noEntry;
    std::uint32_t child = noEntry;
    unsigned char color = black;
    std::uint32_t start = 0;
};

/// The names of one storage as a red-black tree: the middle one on top, and what stands below the last full
/// level is red.
class StorageTree {
  public:
    StorageTree(const std::vector<std::uint32_t>& sorted, std::vector<Placed>& placed)
        : sorted_(sorted), placed_(placed) {
        while ((std::size_t{2} << fullLevels_) - 1 <= sorted.size()) ++fullLevels_;
    }

    std::uint32_t build() { return build(0, sorted_.size(), 0); }

  private:
    std::uint32_t build(std::size_t begin, std::size_t end, std::size_t level) {
        if (begin == end) return noEntry;
        const std::size_t middle = begin + (end - begin) / 2;
        Placed& placed = placed_[sorted_[middle]];
        placed.color = level < fullLevels_ ? black : red;
        placed.left = build(begin, middle, level + 1);
        placed.right = build(middle + 1, end, level + 1);
        return sorted_[middle];
    }

    const std::vector<std::uint32_t>& sorted_;
    std::vector<Placed>& placed_;
    std::size_t fullLevels_ = 0;
};

/// Lays the file out: streams, the mini stream, its table, the directory, the table of sectors, and the list
/// of that table's places.
class CompoundWriter {
  public:
    CompoundWriter(const CompoundFile& file, const ByteSink& sink) : file_(file), sink_(sink) {}

    PackageResult write(const CompoundLimits& limits) {
        if (file_.count() > limits.entries) {
            return {PackageProblem::beyondLimits, "the number of entries"_text};
        }
        placed_.resize(file_.count());
        makeTrees();
        placeStreams();
        placeTables();
        if ((std::uint64_t{sectors()} + 1) * sectorBytes > limits.fileBytes) {
            return {PackageProblem::beyondLimits, "the size of the file"_text};
        }
        return emitAll();
    }

  private:
    void makeTrees() {
        std::map<std::size_t, std::vector<std::uint32_t>> storages;
        for (std::size_t i = 1; i < file_.count(); ++i) {
            storages[file_.entry(i).parent].push_back(static_cast<std::uint32_t>(i));
        }
        for (auto& [parent, places] : storages) {
            std::sort(places.begin(), places.end(), [this](std::uint32_t a, std::uint32_t b) {
                return compoundNameLess(file_.entry(a).name, file_.entry(b).name);
            });
            placed_[parent].child = StorageTree(places, placed_).build();
        }
    }

    [[nodiscard]] std::size_t sectors() const { return fat_.size(); }

    /// A chain of `count` sectors behind all others; gives the first.
    static std::uint32_t chain(std::vector<std::uint32_t>& table, std::size_t count) {
        if (count == 0) return endOfChain;
        const auto first = static_cast<std::uint32_t>(table.size());
        for (std::size_t i = 1; i < count; ++i) {
            table.push_back(static_cast<std::uint32_t>(table.size() + 1));
        }
        table.push_back(endOfChain);
        return first;
    }

    void placeStreams() {
        for (std::size_t i = 1; i < file_.count(); ++i) {
            const CompoundEntry& entry = file_.entry(i);
            if (entry.isStorage) continue;
            const std::size_t size = entry.content.size();
            if (size == 0) {
                placed_[i].start = endOfChain;
            } else if (size < miniCutoff) {
                placed_[i].start = chain(miniFat_, piecesOf(size, miniSectorBytes));
            } else {
                placed_[i].start = chain(fat_, piecesOf(size, sectorBytes));
            }
        }
    }

    void placeTables() {
        placed_[0].start = chain(fat_, piecesOf(miniFat_.size() * miniSectorBytes, sectorBytes));
        miniFatAt_ = chain(fat_, piecesOf(miniFat_.size(), numbersOfSector));
        directoryAt_ = chain(fat_, piecesOf(file_.count() * entryBytes, sectorBytes));
        const std::size_t content = sectors();
        for (;;) {
            const std::size_t needed = piecesOf(content + fatSectors_ + difatSectors_, numbersOfSector);
            const std::size_t beyond = needed > headerFatSectors ? needed - headerFatSectors : 0;
            const std::size_t lists = piecesOf(beyond, numbersOfSector - 1);
            if (needed == fatSectors_ && lists == difatSectors_) break;
            fatSectors_ = needed;
            difatSectors_ = lists;
        }
        fatAt_ = static_cast<std::uint32_t>(content);
        fat_.insert(fat_.end(), fatSectors_, fatSector);
        fat_.insert(fat_.end(), difatSectors_, difatSector);
    }

    PackageResult emitAll() {
        PackageResult result = sink_(header());
        for (std::size_t i = 1; result && i < file_.count(); ++i) {
            const std::string& content = file_.entry(i).content;
            if (content.size() >= miniCutoff) result = emitPadded(content);
        }
        if (result) result = emitPadded(miniStream());
        if (result) result = emitNumbers(miniFat_);
        if (result) result = emitPadded(directory());
        if (result) result = emitNumbers(fat_);
        if (result) result = sink_(difat());
        return result;
    }

    PackageResult emitPadded(std::string_view bytes) {
        if (bytes.empty()) return {};
        PackageResult result = sink_(bytes);
        const std::size_t over = bytes.size() % sectorBytes;
        if (result && over != 0) result = sink_(std::string(sectorBytes - over, '\0'));
        return result;
    }

    /// A table in whole sectors; what is behind its end is free.
    PackageResult emitNumbers(const std::vector<std::uint32_t>& numbers) {
        std::string bytes;
        bytes.reserve(piecesOf(numbers.size(), numbersOfSector) * sectorBytes);
        RecordWriter record(bytes);
        for (const std::uint32_t each : numbers) record.four(each);
        while (bytes.size() % sectorBytes != 0) record.four(freeSector);
        return bytes.empty() ? PackageResult() : sink_(bytes);
    }

    [[nodiscard]] std::string header() const {
        std::string bytes;
        RecordWriter record(bytes);
        record.text(compoundformat::signature).text(std::string(16, '\0'));
        record.two(0x3E).two(3).two(0xFFFE).two(compoundformat::usualShift).two(compoundformat::miniShift);
        record.text(std::string(6, '\0')).four(0).four(fatSectors_).four(directoryAt_).four(0);
        record.four(miniCutoff).four(miniFatAt_).four(piecesOf(miniFat_.size(), numbersOfSector));
        record.four(difatSectors_ == 0 ? endOfChain : fatAt_ + fatSectors_).four(difatSectors_);
        for (std::size_t i = 0; i < headerFatSectors; ++i) {
            record.four(i < fatSectors_ ? fatAt_ + i : freeSector);
        }
        return bytes;
    }

    [[nodiscard]] std::string difat() const {
        std::string bytes;
        RecordWriter record(bytes);
        std::size_t listed = headerFatSectors;
        for (std::size_t list = 0; list < difatSectors_; ++list) {
            for (std::size_t i = 0; i + 1 < numbersOfSector; ++i, ++listed) {
                record.four(listed < fatSectors_ ? fatAt_ + listed : freeSector);
            }
            record.four(list + 1 < difatSectors_ ? fatAt_ + fatSectors_ + list + 1 : endOfChain);
        }
        return bytes;
    }

    [[nodiscard]] std::string miniStream() const {
        std::string bytes;
        for (std::size_t i = 1; i < file_.count(); ++i) {
            const std::string& content = file_.entry(i).content;
            if (content.size() >= miniCutoff) continue;
            bytes += content;
            bytes.resize(piecesOf(bytes.size(), miniSectorBytes) * miniSectorBytes, '\0');
        }
        return bytes;
    }

    [[nodiscard]] std::string directory() const {
        std::string bytes;
        for (std::size_t i = 0; i < file_.count(); ++i) appendEntry(i, bytes);
        while (bytes.size() % sectorBytes != 0) {
            RecordWriter record(bytes);
            record.text(std::string(68, '\0')).four(noEntry).four(noEntry).four(noEntry);
            record.text(std::string(entryBytes - 80, '\0'));
        }
        return bytes;
    }

    void appendEntry(std::size_t place, std::string& bytes) const {
        const CompoundEntry& entry = file_.entry(place);
        const Placed& placed = placed_[place];
        RecordWriter record(bytes);
        const std::size_t nameAt = bytes.size();
        for (const char16_t unit : entry.name) record.two(unit);
        bytes.resize(nameAt + nameBytes, '\0');
        record.two((entry.name.size() + 1) * 2);
        const unsigned char stored =
            entry.isStorage ? compoundformat::typeStorage : compoundformat::typeStream;
        bytes += static_cast<char>(place == 0 ? compoundformat::typeRoot : stored);
        bytes += static_cast<char>(placed.color);
        record.four(placed.left).four(placed.right).four(placed.child);
        record.text({entry.classId.data(), entry.classId.size()}).four(entry.state);
        record.eight(entry.created).eight(entry.modified).four(placed.start);
        record.eight(place == 0 ? miniFat_.size() * miniSectorBytes : entry.content.size());
    }

    const CompoundFile& file_;
    const ByteSink& sink_;
    std::vector<Placed> placed_;
    std::vector<std::uint32_t> fat_;
    std::vector<std::uint32_t> miniFat_;
    std::size_t fatSectors_ = 0;
    std::size_t difatSectors_ = 0;
    std::uint32_t fatAt_ = 0;
    std::uint32_t miniFatAt_ = endOfChain;
    std::uint32_t directoryAt_ = endOfChain;
};

}  // namespace

PackageResult CompoundFile::write(const ByteSink& sink, const CompoundLimits& limits) const {
    return CompoundWriter(*this, sink).write(limits);
}

}  // namespace vexa::frontend
