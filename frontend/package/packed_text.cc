#include "frontend/package/packed_text.h"

#include <new>
#include <utility>

namespace vexa::frontend {

namespace {

/// Texts that become so long are mostly alike in themselves; more thorough levels are slower and gain little.
constexpr int level = 1;

}  // namespace

void PackedText::takeAll(std::string& text) {
    Piece piece;
    bytes_ += text.size();
    const bool packs = bytes_ > plainBytes_;
    if (packs && deflater_ == nullptr) deflater_ = std::make_unique<Deflater>(level);
    if (packs && deflater_->pack(text, piece.bytes)) {
        piece.unpacked = text.size();
        text.clear();
    } else {
        piece.bytes = std::exchange(text, {});
        // What comes next becomes as long, and is not to be copied again and again on its way.
        if (piece.bytes.size() >= pieceBytes) text.reserve(pieceBytes + pieceBytes / 8);
    }
    held_ += piece.bytes.size();
    pieces_.push_back(std::move(piece));
}

bool PackedText::next(std::string& text) {
    if (pieces_.empty()) return false;
    Piece piece = std::move(pieces_.front());
    pieces_.pop_front();
    if (piece.unpacked == 0) {
        text = std::move(piece.bytes);
        return true;
    }
    if (inflater_ == nullptr) inflater_ = std::make_unique<Inflater>();
    if (!inflater_->unpack(piece.bytes, piece.unpacked, text)) throw std::bad_alloc();
    return true;
}

PackageResult PackedText::release(const ByteSink& sink) {
    PackageResult result;
    std::string text;
    while (result && next(text)) result = sink(text);
    return result;
}

}  // namespace vexa::frontend
