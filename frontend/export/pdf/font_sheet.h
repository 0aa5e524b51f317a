// Letters of a font that is named and not in the file: up to 224 of them have codes of one byte.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace vexa::frontend::pdf {

/// Whether readers find the letter of the character in a font by name: it stands alone, from left to right,
/// and fonts of readers can be expected to have it.
[[nodiscard]] bool isFoundByName(char32_t character);

class FontSheet {
  public:
    /// `name` is that within a page's resources. A sheet `isWestern` has the characters of the Western
    /// European set and no others.
    FontSheet(std::string name, bool isWestern);

    [[nodiscard]] const std::string& name() const { return name_; }
    /// Gives codes to all the characters; false, and no change, when there are not enough.
    [[nodiscard]] bool take(const std::u32string& characters);
    /// The code of a character that was taken.
    [[nodiscard]] unsigned char code(char32_t character) const;

    /// The characters by their codes, from 32 on; 0 for a code without one.
    [[nodiscard]] std::vector<char32_t> characters() const;
    /// The value of the font's `Encoding`.
    [[nodiscard]] std::string encoding() const;
    /// What says which characters the codes stand for; empty where the encoding does.
    [[nodiscard]] std::string unicodeMap() const;

  private:
    std::string name_;
    bool isWestern_;
    std::map<char32_t, unsigned char> codes_;
};

}  // namespace vexa::frontend::pdf
