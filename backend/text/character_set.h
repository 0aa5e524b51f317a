// The back end's character set, and text operations that respect it.
//
// UTF-8, single-byte and double-byte sets. A byte of a multi-byte character is never taken for the ASCII
// character of the same value.
#pragma once

#include <bitset>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vexa {

/// One character set: its name, the lengths of its characters and its conversions. ASCII characters stand for
/// themselves in every set. A set may be used by one thread at a time.
class CharacterSet {
  public:
    virtual ~CharacterSet() = default;

    /// The set of that name ("UTF-8", "windows-1252", "Shift_JIS", "GB18030", ...; case, hyphens and
    /// underscores do not matter), or null when it is not known or cannot carry the command language (UTF-16,
    /// EBCDIC, sets with shift states).
    [[nodiscard]] static std::unique_ptr<CharacterSet> find(std::string_view name);

    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] bool isUtf8() const { return utf8_; }
    /// True when no byte above 127 begins a character of several bytes.
    [[nodiscard]] bool isSingleByte() const { return singleByte_; }
    /// True when a byte that equals `character`, which is ASCII, never is a part of a longer character, so
    /// that it can be searched for byte by byte. (A set may say false where that is only not known.)
    [[nodiscard]] bool standsAlone(char character) const {
        return !asciiTrails_.test(static_cast<unsigned char>(character));
    }

    /// Bytes of the character that begins at `text`, of which `available` bytes may be read: at least 1 and
    /// at most `available` when `available` is not 0; 0 for an empty text. A broken character counts as one
    /// byte.
    [[nodiscard]] virtual std::size_t characterLength(const char* text, std::size_t available) const = 0;

    /// Text of this set as UTF-8; what cannot be read becomes U+FFFD.
    [[nodiscard]] virtual std::string toUtf8(std::string_view text) const = 0;
    /// UTF-8 as text of this set; what the set lacks becomes a question mark.
    [[nodiscard]] virtual std::string fromUtf8(std::string_view text) const = 0;
    /// Text of this set as UTF-16; nothing when it cannot be converted.
    [[nodiscard]] virtual std::optional<std::u16string> toUtf16(std::string_view text) const = 0;

    /// What stands for `character` (the bytes of one, as `characterLength` measures it) in comparisons
    /// without regard to case. What is no character has a value of its own above U+10FFFF.
    [[nodiscard]] virtual char32_t foldedCharacter(std::string_view character) const = 0;
    /// Appends the capital of `character` to `text`, or `character` itself where the set has no capital of
    /// it.
    virtual void appendCapital(std::string& text, std::string_view character) const = 0;

  protected:
    using AsciiTrails = std::bitset<128>;

    /// `asciiTrails`: the ASCII bytes that may be a part of a longer character; all of them where that is not
    /// known.
    CharacterSet(std::string name, bool utf8, bool singleByte,
                 const AsciiTrails& asciiTrails = AsciiTrails().set())
        : name_(std::move(name)), utf8_(utf8), singleByte_(singleByte), asciiTrails_(asciiTrails) {}

  private:
    std::string name_;
    bool utf8_;
    bool singleByte_;
    AsciiTrails asciiTrails_;
};

/// The back end's current character set; UTF-8 until the program installs another.
[[nodiscard]] const CharacterSet& currentCharacterSet();
/// Installs `set`; null installs UTF-8.
void installCharacterSet(std::unique_ptr<CharacterSet> set);

/// Text of the current character set as UTF-8, and back. Both are the identity, at the cost of a copy, for
/// valid UTF-8; the result of the first is valid UTF-8 whatever the text holds.
[[nodiscard]] std::string toUtf8(std::string_view text);
[[nodiscard]] std::string fromUtf8(std::string_view text);

/// Compares without regard to case, character by character; 0 when equal, else below or above 0.
[[nodiscard]] int VEXAMBstricmp_A(const char* left, const char* right);
/// Compares byte by byte; 0 when equal, else below or above 0.
[[nodiscard]] int VEXAMBstrcmp_A(const char* left, const char* right);
/// The first place where the single-byte character `character` stands as a character of its own, or null.
[[nodiscard]] const char* VEXAMBstrchr_A(const char* text, int character);
/// Bytes of the character that begins at `text`; 0 at the end of the text.
[[nodiscard]] int VEXAMBmbclen_A(const char* text);
/// Text of the current character set as a zero-terminated 16-bit text, or null when it cannot be converted.
/// The buffer belongs to the library and lives until the next call.
[[nodiscard]] const char16_t* VEXAMBTranscodeGeneric(const char* text);
/// A zero-terminated 16-bit text as UTF-8; a surrogate without its partner becomes U+FFFD.
[[nodiscard]] std::string VEXAMBU16ToU8(const char16_t* text);

/// `text` in capitals, character by character: every letter whose capital is one character that the set has.
/// A trail byte that looks like a letter is part of its character and never changed.
[[nodiscard]] std::string toUpperCase(std::string_view text);
/// True when `VEXAMBstricmp_A` would find the two texts equal.
[[nodiscard]] bool equalsIgnoringCase(std::string_view left, std::string_view right);

}  // namespace vexa
