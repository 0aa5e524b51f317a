// A text that grows to hundreds of megabytes. A string would copy itself again and again, and need its size
// twice.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <utility>

namespace vexa::frontend {

class TextPieces {
  public:
    /// Pieces are so large that systems take the memory back at once when it is freed.
    static constexpr std::size_t usualBytes = std::size_t{48} << 20U;

    explicit TextPieces(std::size_t pieceBytes = usualBytes) : pieceBytes_(pieceBytes) {}

    /// Takes the text away from `text` when that has become long.
    void take(std::string& text) {
        if (text.size() < pieceBytes_) return;
        bytes_ += text.size();
        pieces_.push_back(std::move(text));
        text.clear();
        text.reserve(pieceBytes_ + pieceBytes_ / 8);
    }

    /// Gives each piece in its order to `use`, and forgets it.
    template <typename Use>
    void release(const Use& use) {
        for (; !pieces_.empty(); pieces_.pop_front()) use(pieces_.front());
    }

    /// All of it with `rest` behind; nothing is left here.
    [[nodiscard]] std::string join(const std::string& rest) {
        std::string whole;
        whole.reserve(bytes_ + rest.size());
        release([&whole](const std::string& piece) { whole += piece; });
        whole += rest;
        return whole;
    }

  private:
    std::size_t pieceBytes_;
    std::deque<std::string> pieces_;
    std::size_t bytes_ = 0;
};

}  // namespace vexa::frontend
