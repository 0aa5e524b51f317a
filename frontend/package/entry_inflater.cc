#include "frontend/package/entry_inflater.h"

#include <zlib.h>

#include <algorithm>

#include "frontend/package/deflate.h"

namespace vexa::frontend {
namespace {

constexpr std::size_t pieceOfInflated = 256U << 10U;
// What the library says of where it stands.
constexpr int atBlock = 128;
constexpr int inLastBlock = 64;
constexpr int unusedBits = 7;
// Its counters are narrow.
constexpr std::size_t mostGiven = 1U << 30U;

Bytef* bytesOf(std::string_view text) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): the library only reads there
    return reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
}

}  // namespace

EntryInflater::EntryInflater(std::string_view packed)
    : packed_(packed), stream_(std::make_unique<z_stream>()) {
    isOpen_ = inflateInit2(stream_.get(), -MAX_WBITS) == Z_OK;
}

EntryInflater::~EntryInflater() {
    if (isOpen_) {
        inflateEnd(stream_.get());
    }
}

bool EntryInflater::goTo(const PackedMark& mark) {
    if (!isOpen_ || inflateReset(stream_.get()) != Z_OK) {
        return false;
    }
    taken_ = mark.bits / 8;
    if (const auto passed = static_cast<unsigned>(mark.bits % 8); passed > 0) {
        const int rest = static_cast<unsigned char>(packed_[taken_++]) >> passed;
        if (inflatePrime(stream_.get(), static_cast<int>(8 - passed), rest) != Z_OK) {
            return false;
        }
    }
    isAtEnd_ = false;
    begin_ = end_ = counted_ = 0;
    bytes_ = lastMark_ = mark.bytes;
    crc_ = mark.crc;
    return mark.window.empty() || inflateSetDictionary(stream_.get(), bytesOf(mark.window),
                                                       static_cast<uInt>(mark.window.size())) == Z_OK;
}

bool EntryInflater::next(std::string_view& piece, std::vector<PackedMark>* marks) {
    piece = {};
    if (!isOpen_ || isAtEnd_) {
        return isOpen_;
    }
    buffer_.resize(packedWindow + pieceOfInflated);
    const std::size_t kept = std::min(end_, packedWindow);
    std::copy_n(buffer_.begin() + static_cast<std::ptrdiff_t>(end_ - kept), kept, buffer_.begin());
    begin_ = end_ = counted_ = kept;
    const bool isGood = inflatePiece(marks);
    count();
    piece = std::string_view(buffer_).substr(begin_, end_ - begin_);
    return isGood && (isAtEnd_ ? taken_ == packed_.size() : !piece.empty());
}

bool EntryInflater::inflatePiece(std::vector<PackedMark>* marks) {
    while (end_ < buffer_.size() && !isAtEnd_) {
        const std::string_view rest = packed_.substr(taken_, mostGiven);
        stream_->next_in = bytesOf(rest);
        stream_->avail_in = static_cast<uInt>(rest.size());
        stream_->next_out = reinterpret_cast<Bytef*>(buffer_.data() + end_);
        stream_->avail_out = static_cast<uInt>(buffer_.size() - end_);
        const int result = inflate(stream_.get(), marks != nullptr ? Z_BLOCK : Z_NO_FLUSH);
        const std::size_t given = rest.size() - stream_->avail_in;
        const std::size_t end = buffer_.size() - stream_->avail_out;
        const bool isStuck = given == 0 && end == end_;
        taken_ += given;
        end_ = end;
        isAtEnd_ = result == Z_STREAM_END;
        if (!isAtEnd_ && (result != Z_OK || isStuck)) {
            return false;
        }
        const bool isBetween = (stream_->data_type & (atBlock | inLastBlock)) == atBlock;
        if (marks != nullptr && !isAtEnd_ && isBetween) {
            mark(*marks);
        }
    }
    return true;
}

/// Brings the checksum up to what was unpacked.
void EntryInflater::count() {
    const std::string_view fresh = std::string_view(buffer_).substr(counted_, end_ - counted_);
    crc_ = crcOf(fresh, crc_);
    bytes_ += fresh.size();
    counted_ = end_;
}

void EntryInflater::mark(std::vector<PackedMark>& marks) {
    if (bytes_ + (end_ - counted_) < lastMark_ + marksApart) {
        return;
    }
    count();
    lastMark_ = bytes_;
    const std::size_t window = std::min(end_, packedWindow);
    const auto unused = static_cast<unsigned>(stream_->data_type & unusedBits);
    marks.push_back(
        {std::uint64_t{taken_} * 8 - unused, bytes_, crc_, buffer_.substr(end_ - window, window)});
}

std::uint32_t crcTogether(std::uint32_t first, std::uint32_t second, std::uint64_t bytesOfSecond) {
    std::uint64_t together = first;
    // The library's own number of bytes is narrow on some systems.
    for (std::uint64_t left = bytesOfSecond; left > 0;) {
        const std::uint64_t step = std::min<std::uint64_t>(left, mostGiven);
        together = crc32_combine(static_cast<uLong>(together), left == step ? second : 0,
                                 static_cast<z_off_t>(step));
        left -= step;
    }
    return static_cast<std::uint32_t>(together);
}

}  // namespace vexa::frontend
