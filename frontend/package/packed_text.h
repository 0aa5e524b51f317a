// A text that is written from its beginning to its end, read once, and may become hundreds of megabytes long
// meanwhile: what goes beyond some megabytes is held packed.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "frontend/package/deflate.h"
#include "frontend/package/package_result.h"

namespace vexa::frontend {

/// Called, with a text that grows, by whoever appends much to it; may take away what is there.
using TextTaker = std::function<void(std::string& text)>;

class PackedText {
  public:
    /// Whoever appends piece by piece hands a piece over when it has become so long.
    static constexpr std::size_t pieceBytes = std::size_t{1} << 20U;
    static constexpr std::size_t usualPlainBytes = std::size_t{32} << 20U;

    /// The first `plainBytes` bytes are held as they are, since packing takes time.
    explicit PackedText(std::size_t plainBytes = usualPlainBytes) : plainBytes_(plainBytes) {}

    /// Takes the text away from `text` when that has become long; `text` is empty then.
    void take(std::string& text) {
        if (text.size() >= pieceBytes) takeAll(text);
    }
    /// The same however long it is, an empty one too.
    void takeAll(std::string& text);

    /// Bytes of the text, and those that it takes.
    [[nodiscard]] std::size_t size() const { return bytes_; }
    [[nodiscard]] std::size_t held() const { return held_; }

    /// Takes the oldest piece, as it was when it was taken; false when there is none. A packed one takes
    /// memory to unpack: without it the text is lost, and `std::bad_alloc` is thrown.
    [[nodiscard]] bool next(std::string& text);
    /// Gives the text piece by piece to `sink`, and forgets each one.
    PackageResult release(const ByteSink& sink);

  private:
    struct Piece {
        std::string bytes;
        std::size_t unpacked = 0;  ///< 0 for one that is not packed
    };

    std::size_t plainBytes_;
    std::size_t bytes_ = 0;
    std::size_t held_ = 0;
    std::deque<Piece> pieces_;
    std::unique_ptr<Deflater> deflater_;  // when it is needed
    std::unique_ptr<Inflater> inflater_;
};

}  // namespace vexa::frontend
