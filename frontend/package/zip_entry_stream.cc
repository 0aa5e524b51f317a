#include "frontend/package/zip_entry_stream.h"

#include <zlib.h>

#include <algorithm>
#include <new>
#include <vector>

#include "frontend/package/deflate.h"

namespace vexa::frontend {
namespace {

constexpr std::size_t pieceBytes = 256U << 10U;

PackageResult damagedEntry(const ZipEntry& entry) {
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
        piece = rest_.substr(0, pieceBytes);
        rest_.remove_prefix(piece.size());
        const bool fits = check_.take(piece);
        return fits && (!rest_.empty() || check_.isWhole()) ? PackageResult() : damagedEntry(entry_);
    }

  private:
    const ZipEntry& entry_;
    std::string_view rest_;
    EntryCheck check_;
};

class DeflatedSource {
  public:
    DeflatedSource(const ZipEntry& entry, std::string_view packed)
        : entry_(entry), rest_(packed), check_(entry) {
        isGood_ = inflateInit2(&stream_, -MAX_WBITS) == Z_OK;
    }
    ~DeflatedSource() { inflateEnd(&stream_); }
    DeflatedSource(const DeflatedSource&) = delete;
    DeflatedSource& operator=(const DeflatedSource&) = delete;

    PackageResult next(std::string_view& piece) {
        piece = {};
        if (!isGood_) {
            return PackageProblem::noMemory;
        }
        if (atEnd_) {
            return {};
        }
        piece_.resize(pieceBytes);
        const std::size_t made = fill();
        piece = std::string_view(piece_).substr(0, made);
        const bool fits = check_.take(piece);
        if (!fits || (atEnd_ ? !check_.isWhole() : made == 0)) {
            piece = {};
            atEnd_ = true;
            return damagedEntry(entry_);
        }
        return {};
    }

  private:
    /// Unpacks a piece; fewer bytes than that only at the end, or where the bytes cannot be unpacked.
    std::size_t fill() {
        std::size_t made = 0;
        while (made < piece_.size() && !atEnd_) {
            // Its counters are narrow.
            const std::size_t given = std::min<std::size_t>(rest_.size(), 1U << 30U);
            // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): the library only reads there
            stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(rest_.data()));
            stream_.avail_in = static_cast<uInt>(given);
            stream_.next_out = reinterpret_cast<Bytef*>(piece_.data() + made);
            stream_.avail_out = static_cast<uInt>(piece_.size() - made);
            const int result = inflate(&stream_, Z_NO_FLUSH);
            rest_.remove_prefix(given - stream_.avail_in);
            const std::size_t now = piece_.size() - stream_.avail_out;
            const bool stuck = now == made && stream_.avail_in == given;
            made = now;
            atEnd_ = result == Z_STREAM_END;
            if ((result != Z_OK && !atEnd_) || (stuck && !atEnd_) || (atEnd_ && !rest_.empty())) {
                atEnd_ = false;
                return 0;
            }
        }
        return made;
    }

    const ZipEntry& entry_;
    std::string_view rest_;
    EntryCheck check_;
    z_stream stream_{};
    std::string piece_;
    bool isGood_ = false;
    bool atEnd_ = false;
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
