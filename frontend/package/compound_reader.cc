// Every sector belongs to one chain at most, and every entry of the directory to one storage: that bounds
// time and memory, and finds chains and trees that run in circles.
#include <algorithm>
#include <new>
#include <utility>

#include "frontend/package/compound_file.h"
#include "frontend/package/compound_format.h"
#include "frontend/package/zip_format.h"

namespace vexa::frontend {

namespace {

using compoundformat::endOfChain;
using compoundformat::entryBytes;
using compoundformat::freeSector;
using compoundformat::headerBytes;
using compoundformat::headerFatAt;
using compoundformat::headerFatSectors;
using compoundformat::miniCutoff;
using compoundformat::miniSectorBytes;
using compoundformat::nameBytes;
using compoundformat::noEntry;
using compoundformat::piecesOf;
using compoundformat::typeRoot;
using compoundformat::typeStorage;
using compoundformat::typeStream;
using zipformat::RecordReader;

PackageResult damagedFile() { return {PackageProblem::damaged, "the compound file"_text}; }

/// One record of the directory as it stands there.
struct DirectoryRecord {
    CompoundEntry entry;
    unsigned char type = 0;
    std::uint32_t left = noEntry;
    std::uint32_t right = noEntry;
    std::uint32_t child = noEntry;
    std::uint32_t start = endOfChain;
    std::uint64_t size = 0;
    bool isTaken = false;
};

/// Sectors of one kind with the table that chains them.
struct SectorTable {
    std::vector<std::uint32_t> next;
    std::vector<bool> taken;

    /// Appends `count` sectors from `first` on to the chain.
    bool follow(std::uint32_t first, std::size_t count, std::vector<std::uint32_t>& chain) {
        std::uint32_t sector = first;
        for (std::size_t i = 0; i < count; ++i) {
            if (!take(sector)) return false;
            chain.push_back(sector);
            sector = next[sector];
        }
        return true;
    }
    /// The same up to the end of the chain.
    bool followToEnd(std::uint32_t first, std::vector<std::uint32_t>& chain) {
        for (std::uint32_t sector = first; sector != endOfChain; sector = next[sector]) {
            if (!take(sector)) return false;
            chain.push_back(sector);
        }
        return true;
    }
    bool take(std::uint32_t sector) {
        if (sector >= next.size() || sector >= taken.size() || taken[sector]) return false;
        taken[sector] = true;
        return true;
    }
};

}  // namespace

class CompoundReader {
  public:
    CompoundReader(std::string_view bytes, const CompoundLimits& limits) : bytes_(bytes), limits_(limits) {}

    PackageResult read(CompoundFile& file) {
        if (!CompoundFile::isOne(bytes_)) return PackageProblem::notAnArchive;
        if (bytes_.size() > limits_.fileBytes) return {PackageProblem::tooLarge, "the size of the file"_text};
        if (!readHeader() || !readFat() || !readDirectory()) return damagedFile();
        if (records_.size() > limits_.entries) {
            return {PackageProblem::tooLarge, "the number of entries"_text};
        }
        if (!readMiniStream() || !placeEntries(file)) return damagedFile();
        return {};
    }

  private:
    bool readHeader() {
        if (bytes_.size() < headerBytes) return false;
        RecordReader header(bytes_.substr(compoundformat::signature.size()));
        header.skip(16 + 2);  // class identifier, minor version
        const std::uint16_t version = header.two();
        const std::uint16_t byteOrder = header.two();
        const std::uint16_t shift = header.two();
        const std::uint16_t miniShift = header.two();
        header.skip(6 + 4);  // reserved; sectors of the directory
        fatSectors_ = header.four();
        directory_ = header.four();
        header.skip(4);  // of transactions
        const std::uint32_t cutoff = header.four();
        miniFat_ = header.four();
        miniFatSectors_ = header.four();
        difat_ = header.four();
        const bool usual = version == 3 && shift == compoundformat::usualShift;
        const bool wide = version == 4 && shift == compoundformat::wideShift;
        sectorBytes_ = std::size_t{1} << shift % 16U;
        isWide_ = wide;
        sectors_ = bytes_.size() <= sectorBytes_ ? 0 : piecesOf(bytes_.size() - sectorBytes_, sectorBytes_);
        return (usual || wide) && byteOrder == 0xFFFE && miniShift == compoundformat::miniShift &&
               cutoff == miniCutoff && fatSectors_ <= sectors_;
    }

    /// Nothing of a sector that the file does not have; what is missing of the last one is zeros.
    [[nodiscard]] std::string_view sector(std::uint32_t number) const {
        const std::size_t at = (std::size_t{number} + 1) * sectorBytes_;
        return at < bytes_.size() ? bytes_.substr(at, sectorBytes_) : std::string_view();
    }
    [[nodiscard]] std::string wholeSector(std::uint32_t number) const {
        std::string whole(sector(number));
        whole.resize(sectorBytes_, '\0');
        return whole;
    }

    /// The places of the table's sectors stand in the header, and the rest in a chain of their own.
    bool readFat() {
        sectorsOf_.taken.assign(sectors_, false);
        sectorsOf_.next.reserve(sectors_);
        RecordReader header(bytes_.substr(headerFatAt));
        std::size_t left = fatSectors_;
        for (std::size_t i = 0; i < headerFatSectors && left > 0; ++i, --left) {
            if (!addFatSector(header.four())) return false;
        }
        const std::size_t perSector = sectorBytes_ / 4 - 1;
        std::uint32_t next = difat_;
        while (left > 0) {
            if (next >= sectors_ || sectorsOf_.taken[next]) return false;
            sectorsOf_.taken[next] = true;
            const std::string places = wholeSector(next);
            RecordReader reader(places);
            for (std::size_t i = 0; i < perSector; ++i) {
                const std::uint32_t place = reader.four();
                if (left == 0) continue;
                if (!addFatSector(place)) return false;
                --left;
            }
            next = reader.four();
        }
        sectorsOf_.next.resize(sectors_, freeSector);
        return true;
    }

    bool addFatSector(std::uint32_t place) {
        if (place >= sectors_ || sectorsOf_.taken[place]) return false;
        sectorsOf_.taken[place] = true;
        appendNumbers(wholeSector(place), sectorsOf_.next);
        return true;
    }

    static void appendNumbers(std::string_view bytes, std::vector<std::uint32_t>& numbers) {
        RecordReader reader(bytes);
        for (std::size_t i = 0; i < bytes.size() / 4; ++i) numbers.push_back(reader.four());
    }

    bool readDirectory() {
        std::vector<std::uint32_t> chain;
        if (!sectorsOf_.followToEnd(directory_, chain)) return false;
        for (const std::uint32_t number : chain) {
            const std::string whole = wholeSector(number);
            for (std::size_t at = 0; at < whole.size(); at += entryBytes) {
                if (records_.size() > limits_.entries) return true;
                if (!addRecord(std::string_view(whole).substr(at, entryBytes))) return false;
            }
        }
        return !records_.empty() && records_.front().type == typeRoot;
    }

    bool addRecord(std::string_view bytes) {
        DirectoryRecord record;
        RecordReader reader(bytes);
        std::u16string units;
        for (std::size_t i = 0; i < nameBytes / 2; ++i) units += static_cast<char16_t>(reader.two());
        const std::size_t length = reader.two();
        record.type = static_cast<unsigned char>(bytes[nameBytes + 2]);
        reader.skip(2);
        if (record.type == typeStorage || record.type == typeStream || record.type == typeRoot) {
            if (length % 2 != 0 || length < 2 || length > nameBytes) return false;
            record.entry.name = units.substr(0, length / 2 - 1);
        }
        record.left = reader.four();
        record.right = reader.four();
        record.child = reader.four();
        bytes.substr(80).copy(record.entry.classId.data(), record.entry.classId.size());
        reader.skip(record.entry.classId.size());
        record.entry.state = reader.four();
        record.entry.created = reader.eight();
        record.entry.modified = reader.eight();
        record.entry.isStorage = record.type != typeStream;
        record.start = reader.four();
        record.size = isWide_ ? reader.eight() : reader.four();
        records_.push_back(std::move(record));
        return true;
    }

    bool readMiniStream() {
        const DirectoryRecord& root = records_.front();
        std::vector<std::uint32_t> chain;
        if (root.size > 0 && !readSectors(root.start, root.size, miniStream_)) return false;
        if (miniFatSectors_ > 0 && !sectorsOf_.followToEnd(miniFat_, chain)) return false;
        for (const std::uint32_t number : chain) appendNumbers(wholeSector(number), mini_.next);
        mini_.taken.assign(piecesOf(miniStream_.size(), miniSectorBytes), false);
        return true;
    }

    bool readSectors(std::uint32_t start, std::uint64_t size, std::string& content) {
        if (size > bytes_.size()) return false;
        std::vector<std::uint32_t> chain;
        if (!sectorsOf_.follow(start, piecesOf(size, sectorBytes_), chain)) return false;
        content.reserve(chain.size() * sectorBytes_);
        for (const std::uint32_t number : chain) {
            content += sector(number);
            content.resize(piecesOf(content.size(), sectorBytes_) * sectorBytes_, '\0');
        }
        content.resize(size);
        return true;
    }

    bool readMini(std::uint32_t start, std::uint64_t size, std::string& content) {
        std::vector<std::uint32_t> chain;
        if (!mini_.follow(start, piecesOf(size, miniSectorBytes), chain)) return false;
        for (const std::uint32_t number : chain) {
            content += miniStream_.substr(std::size_t{number} * miniSectorBytes, miniSectorBytes);
        }
        if (content.size() < size) return false;
        content.resize(size);
        return true;
    }

    /// Storages in the order in which they are found, each with what stands in it in the order of its names.
    bool placeEntries(CompoundFile& file) {
        DirectoryRecord& root = records_.front();
        root.isTaken = true;
        root.entry.parent = 0;
        const std::uint32_t first = root.child;
        file.entries_.clear();
        file.entries_.push_back(std::move(root.entry));
        std::vector<std::uint32_t> children{first};  // by place
        for (std::size_t place = 0; place < children.size(); ++place) {
            if (file.entries_[place].isStorage && !placeChildren(file, place, children)) return false;
        }
        return true;
    }

    bool placeChildren(CompoundFile& file, std::size_t parent, std::vector<std::uint32_t>& children) {
        const std::size_t begin = children.size();
        std::vector<std::uint32_t> open;  // whose left side is done or being done
        std::uint32_t next = children[parent];
        while (next != noEntry || !open.empty()) {
            if (next != noEntry) {
                if (next >= records_.size() || records_[next].isTaken || !isEntry(records_[next])) {
                    return false;
                }
                records_[next].isTaken = true;
                open.push_back(next);
                next = records_[next].left;
                continue;
            }
            DirectoryRecord& record = records_[open.back()];
            open.pop_back();
            next = record.right;
            if (!readContent(record)) return false;
            record.entry.parent = parent;
            children.push_back(record.type == typeStorage ? record.child : noEntry);
            file.entries_.push_back(std::move(record.entry));
        }
        return namesDiffer(file, begin);
    }

    static bool isEntry(const DirectoryRecord& record) {
        return (record.type == typeStorage || record.type == typeStream) && !record.entry.name.empty();
    }

    bool readContent(DirectoryRecord& record) {
        if (record.type != typeStream || record.size == 0) return true;
        std::string& content = record.entry.content;
        return record.size < miniCutoff ? readMini(record.start, record.size, content)
                                        : readSectors(record.start, record.size, content);
    }

    static bool namesDiffer(const CompoundFile& file, std::size_t begin) {
        std::vector<const std::u16string*> names;
        for (std::size_t i = begin; i < file.count(); ++i) names.push_back(&file.entry(i).name);
        const auto less = [](const std::u16string* a, const std::u16string* b) {
            return compoundNameLess(*a, *b);
        };
        std::sort(names.begin(), names.end(), less);
        return std::adjacent_find(names.begin(), names.end(), [&less](const auto* a, const auto* b) {
                   return !less(a, b);
               }) == names.end();
    }

    std::string_view bytes_;
    CompoundLimits limits_;
    std::size_t sectorBytes_ = 0;
    bool isWide_ = false;
    std::size_t sectors_ = 0;  ///< that the file has, the last one perhaps in part
    std::size_t fatSectors_ = 0;
    std::uint32_t difat_ = endOfChain;
    std::uint32_t directory_ = endOfChain;
    std::uint32_t miniFat_ = endOfChain;
    std::uint32_t miniFatSectors_ = 0;
    SectorTable sectorsOf_;
    SectorTable mini_;
    std::string miniStream_;
    std::vector<DirectoryRecord> records_;
};

PackageResult CompoundFile::read(std::string_view bytes, const CompoundLimits& limits) {
    PackageResult result;
    CompoundFile read;
    try {
        result = CompoundReader(bytes, limits).read(read);
    } catch (const std::bad_alloc&) {
        result = PackageProblem::noMemory;
    }
    if (!result) read = CompoundFile();
    entries_ = std::move(read.entries_);
    return result;
}

}  // namespace vexa::frontend
