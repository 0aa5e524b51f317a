// The fonts that a drawn page refers to: which characters the codes of a text stand for, and how far each
// goes.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/drawing/qpdf_library.h"
#include "frontend/drawing/vector_target.h"

namespace vexa::frontend {

/// One glyph of a text.
struct VectorGlyph {
    std::u32string text;  ///< what it stands for; may be several characters, or none
    double advance = 0;   ///< of a font of size 1
};

class VectorPageFont {
  public:
    /// `font` is the resource of a page that cairo made.
    explicit VectorPageFont(QPDFObjectHandle font);

    [[nodiscard]] const VectorFont& font() const { return font_; }
    /// The glyphs that the bytes of a text show.
    [[nodiscard]] std::vector<VectorGlyph> glyphs(std::string_view bytes) const;

  private:
    void readName(QPDFObjectHandle descriptor, const std::string& baseFont);
    void readMap(const std::string& map);
    void readWidths(QPDFObjectHandle font);
    void readCidWidths(QPDFObjectHandle descendant);

    VectorFont font_;
    std::size_t codeBytes_ = 1;
    std::map<std::uint32_t, std::u32string> characters_;
    std::map<std::uint32_t, double> widths_;
};

/// The characters of UTF-16, big endian.
[[nodiscard]] std::u32string fromBigEndian(std::string_view bytes);

}  // namespace vexa::frontend
