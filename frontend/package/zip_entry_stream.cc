#include "frontend/package/zip_entry_stream.h"

#include "frontend/package/deflate.h"
#include "frontend/package/entry_inflater.h"

namespace vexa::frontend {
namespace {

constexpr std::size_t pieceOfStored = 256U << 10U;

PackageResult damagedStored(const ZipEntry& entry) {
    return {PackageProblem::damaged, "the entry ^1"_text, {entry.name}};
}

/// What every piece must agree with in the end.
class EntryCheck {
  public:
    explicit EntryCheck(const ZipEntry& entry) : entry_(entry) {}

    bool take(std::string_view piece) {
        crc_ = crcOf(piece, crc_);
        bytes_ += piece.size();
        return bytes_ <= entry_.bytes;
    }
    [[nodiscard]] bool isWhole() const { return bytes_ == entry_.bytes && crc_ == entry_.crc; }

  private:
    const ZipEntry& entry_;
    std::uint64_t bytes_ = 0;
    std::uint32_t crc_ = 0;
};

class StoredSource {
  public:
    StoredSource(const ZipEntry& entry, std::string_view packed)
        : entry_(entry), rest_(packed), check_(entry) {}

    PackageResult next(std::string_view& piece) {
        piece = rest_.substr(0, pieceOfStored);
        rest_.remove_prefix(piece.size());
        const bool fits = check_.take(piece);
        return fits && (!rest_.empty() || check_.isWhole()) ? PackageResult() : damagedStored(entry_);
    }

  private:
    const ZipEntry& entry_;
    std::string_view rest_;
    EntryCheck check_;
};

class DeflatedSource {
  public:
    DeflatedSource(const ZipEntry& entry, std::string_view packed) : entry_(entry), inflater_(packed) {}

    PackageResult next(std::string_view& piece) {
        const bool isGood = inflater_.next(piece);
        const bool isWhole = inflater_.bytes() == entry_.bytes && inflater_.crc() == entry_.crc;
        if (isGood && (inflater_.isAtEnd() ? isWhole : inflater_.bytes() <= entry_.bytes)) {
            return {};
        }
        piece = {};
        return damagedStored(entry_);
    }

  private:
    const ZipEntry& entry_;
    EntryInflater inflater_;
};

}  // namespace

ByteSource entrySource(const ZipReader& reader, std::size_t place) {
    const ZipEntry& entry = reader.entry(place);
    if (entry.method == zipStored) {
        auto source = std::make_shared<StoredSource>(entry, reader.packed(place));
        return [source](std::string_view& piece) { return source->next(piece); };
    }
    if (entry.method == zipDeflated) {
        auto source = std::make_shared<DeflatedSource>(entry, reader.packed(place));
        return [source](std::string_view& piece) { return source->next(piece); };
    }
    return [method = entry.method](std::string_view& piece) {
        piece = {};
        return PackageResult{PackageProblem::otherCompression, "method ^1"_text, {std::to_string(method)}};
    };
}

ByteSource textSource(std::string_view text) {
    return [text](std::string_view& piece) mutable {
        piece = text;
        text = {};
        return PackageResult();
    };
}

}  // namespace vexa::frontend
