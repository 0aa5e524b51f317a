// Texts of the system's own, which string tables translate.
#pragma once

#include <cstddef>
#include <string_view>

namespace vexa {

/// A text of the system: a message, a title, a label, or a key that stands for one. Written as a literal with
/// `_text` behind it, so that a tool finds every text that the string tables must have
/// (`tools/check_texts`), and looked up where it is shown. UTF-8; lives as long as the process.
class SystemText {
  public:
    constexpr SystemText() = default;
    // NOLINTNEXTLINE(google-explicit-constructor): where any text will do, a text of the system does
    constexpr operator std::string_view() const { return key_; }
    [[nodiscard]] constexpr std::string_view key() const { return key_; }
    [[nodiscard]] constexpr bool empty() const { return key_.empty(); }

  private:
    friend constexpr SystemText operator""_text(const char* text, std::size_t length);
    explicit constexpr SystemText(std::string_view key) : key_(key) {}

    std::string_view key_;
};

[[nodiscard]] constexpr SystemText operator""_text(const char* text, std::size_t length) {
    return SystemText(std::string_view(text, length));
}

}  // namespace vexa
