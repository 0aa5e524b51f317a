#include "frontend/package/marked_source.h"

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <iterator>
#include <memory>
#include <new>
#include <system_error>
#include <thread>
#include <utility>

#include "backend/platform/thread_work.h"
#include "frontend/package/deflate_blocks.h"

namespace vexa::frontend {
namespace {

constexpr std::size_t piecesAhead = 4;

PackageResult damagedEntry(const ZipEntry& entry) {
    return {PackageProblem::damaged, "the entry ^1"_text, {entry.name}};
}

/// Unpacks ahead of the reader in a thread, or in the reader's own where the system gives none.
class AheadSource {
  public:
    AheadSource(const ZipReader& reader, std::size_t place, PackedMarks& marks)
        : entry_(reader.entry(place)), inflater_(reader.packed(place)), marks_(marks) {
        try {
            thread_ = std::thread([this] { work(); });
        } catch (const std::system_error&) {
            isThreaded_ = false;
            return;
        }
        // A thread that begins takes memory, which is work as well.
        std::unique_lock lock(mutex_);
        pieceCame_.wait(lock, [this] { return hasBegun_; });
    }
    ~AheadSource() {
        {
            const std::lock_guard lock(mutex_);
            isStopped_ = true;
        }
        roomCame_.notify_one();
        if (thread_.joinable()) {
            thread_.join();
        }
    }
    AheadSource(const AheadSource&) = delete;
    AheadSource& operator=(const AheadSource&) = delete;

    PackageResult next(std::string_view& piece) {
        Piece given;
        if (isThreaded_) {
            std::unique_lock lock(mutex_);
            pieceCame_.wait(lock, [this] { return !pieces_.empty(); });
            given = std::move(pieces_.front());
            // The end, and a failure, stay for whoever asks again.
            if (given.result && !given.text.empty()) {
                pieces_.pop_front();
            } else {
                pieces_.front() = {{}, given.result};
            }
            lock.unlock();
            roomCame_.notify_one();
        } else {
            given = unpack();
        }
        text_ = std::move(given.text);
        piece = text_;
        return given.result;
    }

  private:
    struct Piece {
        std::string text;
        PackageResult result;
    };

    void work() {
        {
            const std::lock_guard lock(mutex_);
            hasBegun_ = true;
        }
        pieceCame_.notify_one();
        for (bool isMore = true; isMore && waitForRoom();) {
            const ThreadWork work;
            Piece piece = unpack();
            isMore = piece.result && !piece.text.empty();
            {
                const std::lock_guard lock(mutex_);
                pieces_.push_back(std::move(piece));
            }
            pieceCame_.notify_one();
        }
        // A thread that ends works, too: it ends while it is waited for.
        std::unique_lock lock(mutex_);
        roomCame_.wait(lock, [this] { return isStopped_; });
    }

    /// False when nobody reads any more.
    bool waitForRoom() {
        std::unique_lock lock(mutex_);
        roomCame_.wait(lock, [this] { return isStopped_ || pieces_.size() < piecesAhead; });
        return !isStopped_;
    }

    Piece unpack() {
        Piece piece;
        try {
            std::string_view text;
            std::vector<PackedMark> marks;
            const bool isGood = inflater_.next(text, &marks);
            const bool isWhole = inflater_.bytes() == entry_.bytes && inflater_.crc() == entry_.crc;
            if (isGood && (inflater_.isAtEnd() ? isWhole : inflater_.bytes() <= entry_.bytes)) {
                marks_.add(marks);
                piece.text = text;
            } else {
                piece.result = damagedEntry(entry_);
            }
        } catch (const std::bad_alloc&) {
            piece.result = PackageProblem::noMemory;
        }
        return piece;
    }

    const ZipEntry& entry_;
    EntryInflater inflater_;
    PackedMarks& marks_;
    std::string text_;
    bool isThreaded_ = true;
    std::mutex mutex_;
    std::condition_variable pieceCame_;
    std::condition_variable roomCame_;
    std::deque<Piece> pieces_;  ///< guarded
    bool hasBegun_ = false;     ///< guarded
    bool isStopped_ = false;    ///< guarded
    std::thread thread_;        ///< the last one: it works on all the others
};

class GapSource {
  public:
    GapSource(const ZipReader& reader, std::size_t place, std::vector<PackedBlocks> gaps)
        : entry_(reader.entry(place)), inflater_(reader.packed(place)), gaps_(std::move(gaps)) {}

    PackageResult next(std::string_view& piece) {
        piece = {};
        if (next_ < gaps_.size() && inflater_.bytes() >= gaps_[next_].from->bytes &&
            !inflater_.goTo(*gaps_[next_++].to)) {
            return PackageProblem::noMemory;
        }
        const std::uint64_t begin = inflater_.bytes();
        if (!inflater_.next(piece)) {
            piece = {};
            return damagedEntry(entry_);
        }
        const std::uint64_t end = next_ < gaps_.size() ? gaps_[next_].from->bytes : UINT64_MAX;
        piece = piece.substr(0, end - begin);
        return {};
    }

  private:
    const ZipEntry& entry_;
    EntryInflater inflater_;
    std::vector<PackedBlocks> gaps_;
    std::size_t next_ = 0;
};

}  // namespace

void PackedMarks::add(std::vector<PackedMark>& marks) {
    if (marks.empty()) {
        return;
    }
    const std::lock_guard lock(mutex_);
    const std::size_t room = mostWaiting - std::min(mostWaiting, marks_.size());
    const auto end = marks.begin() + static_cast<std::ptrdiff_t>(std::min(room, marks.size()));
    std::move(marks.begin(), end, std::back_inserter(marks_));
}

std::vector<PackedMark> PackedMarks::take() {
    const std::lock_guard lock(mutex_);
    return std::exchange(marks_, {});
}

ByteSource markedSource(const ZipReader& reader, std::size_t place, PackedMarks& marks) {
    if (reader.entry(place).method != zipDeflated) {
        return entrySource(reader, place);
    }
    auto source = std::make_shared<AheadSource>(reader, place, marks);
    return [source](std::string_view& piece) { return source->next(piece); };
}

ByteSource sourceWithout(const ZipReader& reader, std::size_t place, std::vector<PackedBlocks> blocks) {
    auto source = std::make_shared<GapSource>(reader, place, std::move(blocks));
    return [source](std::string_view& piece) { return source->next(piece); };
}

std::uint32_t PackedBlocks::crc() const { return to->crc ^ crcTogether(from->crc, 0, bytes()); }

void PackedBlocks::append(std::string& out) const {
    const auto shift = static_cast<unsigned>(from->bits % 8);
    const std::uint64_t bits = to->bits - from->bits;
    const std::size_t first = from->bits / 8;
    const std::size_t whole = bits / 8;
    const std::size_t begin = out.size();
    const auto left = static_cast<unsigned>(bits % 8);
    out.resize(begin + whole + (left > 0 ? 1 : 0));
    if (shift == 0) {
        std::copy_n(packed.begin() + static_cast<std::ptrdiff_t>(first), out.size() - begin,
                    out.begin() + static_cast<std::ptrdiff_t>(begin));
    } else {
        // There is a byte behind each of them: that of the block at the end.
        const char* const read = packed.data() + first;
        char* const written = out.data() + begin;
        for (std::size_t i = 0; i < out.size() - begin; ++i) {
            const unsigned both =
                static_cast<unsigned char>(read[i]) | unsigned{static_cast<unsigned char>(read[i + 1])} << 8U;
            written[i] = static_cast<char>(both >> shift);
        }
    }
    if (left > 0) {
        out.back() = static_cast<char>(static_cast<unsigned char>(out.back()) & ((1U << left) - 1));
    }
    appendEmptyBlock(out, left == 0 ? 0 : 8 - left);
}

}  // namespace vexa::frontend
