// How the character sets are made. For the text library's own files.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "backend/text/character_set.h"

namespace vexa {

/// UTF-8, without any converter.
class Utf8CharacterSet final : public CharacterSet {
  public:
    Utf8CharacterSet() : CharacterSet("UTF-8", true, false, {}) {}

    [[nodiscard]] std::size_t characterLength(const char* text, std::size_t available) const override;
    [[nodiscard]] std::string toUtf8(std::string_view text) const override;
    [[nodiscard]] std::string fromUtf8(std::string_view text) const override;
    [[nodiscard]] std::optional<std::u16string> toUtf16(std::string_view text) const override;
    [[nodiscard]] char32_t foldedCharacter(std::string_view character) const override;
    void appendCapital(std::string& text, std::string_view character) const override;
};

/// The system's conversions between one code page and UTF-16.
class CodePageConverter {
  public:
    enum class Reading { character, broken, needsMore };

    virtual ~CodePageConverter() = default;

    /// The converter for that name, or null; `canonicalName` is then the name that the set is known by.
    [[nodiscard]] static std::unique_ptr<CodePageConverter> open(const std::string& name,
                                                                 std::string& canonicalName);

    /// What the bytes are: one whole character (of the set's form, even if nothing is assigned to it), the
    /// beginning of one, or neither.
    [[nodiscard]] virtual Reading classify(std::string_view bytes) const = 0;
    /// What cannot be read becomes U+FFFD.
    [[nodiscard]] virtual std::u16string toUtf16(std::string_view text) const = 0;
    /// Nothing when any part of the text cannot be read.
    [[nodiscard]] virtual std::optional<std::u16string> toUtf16Strictly(std::string_view text) const = 0;
    /// What the set lacks becomes a question mark.
    [[nodiscard]] virtual std::string fromUtf16(std::u16string_view text) const = 0;
};

/// A single-byte or multi-byte set in which ASCII characters stand for themselves.
class CodePage final : public CharacterSet {
  public:
    /// Null when the set cannot carry the command language.
    [[nodiscard]] static std::unique_ptr<CharacterSet> make(std::string name,
                                                            std::unique_ptr<CodePageConverter> converter);

    [[nodiscard]] std::size_t characterLength(const char* text, std::size_t available) const override;
    [[nodiscard]] std::string toUtf8(std::string_view text) const override;
    [[nodiscard]] std::string fromUtf8(std::string_view text) const override;
    [[nodiscard]] std::optional<std::u16string> toUtf16(std::string_view text) const override;
    [[nodiscard]] char32_t foldedCharacter(std::string_view character) const override;
    void appendCapital(std::string& text, std::string_view character) const override;

  private:
    /// For every lead byte its row in `pairs_`, 0 for a byte that leads no character.
    struct Lengths {
        std::array<std::uint8_t, 256> rowOfLead{};
        /// Rows of 256 trail bytes: 1 not a character, 2 a whole one, 3 the beginning of a longer one.
        std::vector<std::uint8_t> pairs;

        [[nodiscard]] AsciiTrails asciiTrails() const;
    };

    CodePage(std::string name, std::unique_ptr<CodePageConverter> converter, Lengths lengths);

    static Lengths measure(const CodePageConverter& converter);
    [[nodiscard]] std::size_t longLength(const char* text, std::size_t available) const;
    [[nodiscard]] std::optional<char32_t> read(std::string_view character) const;

    std::unique_ptr<CodePageConverter> converter_;
    Lengths lengths_;
};

}  // namespace vexa
