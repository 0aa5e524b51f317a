// Feeds a text to the JSON library's reader and knows how far it has come.
#pragma once

#include <cstddef>
#include <iterator>
#include <string_view>

namespace vexa::frontend {

/// Reads characters through a pointer that others see.
class WatchedCharacter {
  public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    explicit WatchedCharacter(const char** at) : at_(at) {}
    reference operator*() const { return **at_; }
    WatchedCharacter& operator++() {
        ++*at_;
        return *this;
    }
    void operator++(int) { ++*at_; }
    friend bool operator==(const WatchedCharacter& left, const WatchedCharacter& right) {
        return *left.at_ == *right.at_;
    }
    friend bool operator!=(const WatchedCharacter& left, const WatchedCharacter& right) {
        return !(left == right);
    }

  private:
    const char** at_;
};

/// The text is not owned.
class WatchedText {
  public:
    explicit WatchedText(std::string_view text)
        : text_(text), at_(text.data()), end_(text.data() + text.size()) {}
    WatchedText(const WatchedText&) = delete;
    WatchedText& operator=(const WatchedText&) = delete;

    [[nodiscard]] WatchedCharacter begin() { return WatchedCharacter(&at_); }
    [[nodiscard]] WatchedCharacter end() { return WatchedCharacter(&end_); }
    /// How many characters were read. The reader is at most one character behind the token that it reports.
    [[nodiscard]] std::size_t offset() const { return static_cast<std::size_t>(at_ - text_.data()); }
    [[nodiscard]] std::string_view text() const { return text_; }
    /// Where the token begins that ends at `offset` or one character before it.
    [[nodiscard]] std::size_t tokenBegin() const;

  private:
    std::string_view text_;
    const char* at_;
    const char* end_;
};

}  // namespace vexa::frontend
