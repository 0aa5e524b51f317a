// The fonts of a PDF file: which letters of them are shown, and at the end the fonts with those letters
// alone.
#pragma once

#include <hb.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/export/pdf/font_sheet.h"
#include "frontend/export/pdf/pdf_file.h"

namespace vexa::frontend::pdf {

struct HarfBuzzRelease {
    void operator()(hb_font_t* font) const { hb_font_destroy(font); }
    void operator()(hb_face_t* face) const { hb_face_destroy(face); }
    void operator()(hb_buffer_t* buffer) const { hb_buffer_destroy(buffer); }
    void operator()(hb_blob_t* blob) const { hb_blob_destroy(blob); }
};
using HbFont = std::unique_ptr<hb_font_t, HarfBuzzRelease>;
using HbFace = std::unique_ptr<hb_face_t, HarfBuzzRelease>;
using HbBuffer = std::unique_ptr<hb_buffer_t, HarfBuzzRelease>;
using HbBlob = std::unique_ptr<hb_blob_t, HarfBuzzRelease>;

/// Index into the fonts of a `PdfFonts`.
using FontId = std::uint32_t;

/// One face of a font file. Measures are thousandths of the font's size.
class PdfFont {
  public:
    /// `font` belongs to the caller.
    explicit PdfFont(hb_font_t* font);

    /// A font of the face in its own units, which belongs to this object.
    [[nodiscard]] hb_font_t* handle() const { return font_.get(); }
    [[nodiscard]] double unitsPerThousandth() const { return unitsPerThousandth_; }
    [[nodiscard]] double ascent() const { return ascent_; }
    [[nodiscard]] double descent() const { return descent_; }
    /// The advance of a letter, as the file says it.
    [[nodiscard]] double advance(hb_codepoint_t glyph);

    /// The letter is shown and stands for `text`; false when the same one stands for another text already, so
    /// that the place where it is shown has to say so.
    [[nodiscard]] bool use(hb_codepoint_t glyph, std::string_view text);
    /// The sheet that shows all the characters without the font being in the file; null where none can.
    [[nodiscard]] const FontSheet* sheetFor(const std::u32string& characters);

    /// The name of the font within a page's resources, with its letters in the file.
    [[nodiscard]] const std::string& embeddedName() const { return embeddedName_; }

  private:
    friend class PdfFonts;
    struct Glyph {
        float advance = -1;  ///< not looked up yet
        bool isUsed = false;
    };
    Glyph& glyph(hb_codepoint_t id);
    [[nodiscard]] std::string postScriptName() const;
    /// A reference to the font.
    [[nodiscard]] std::string writeEmbedded(PdfFile& file) const;
    [[nodiscard]] std::string writeSheet(PdfFile& file, const FontSheet& sheet) const;

    HbFont font_;
    double unitsPerThousandth_ = 1;
    double ascent_ = 0;
    double descent_ = 0;
    std::vector<Glyph> glyphs_;
    std::map<hb_codepoint_t, std::string> texts_;
    bool isEmbedded_ = false;
    std::string embeddedName_;
    std::deque<FontSheet> sheets_;  // lines refer to them
};

class PdfFonts {
  public:
    /// The font that `font` is a size of; the same one for every size.
    [[nodiscard]] FontId find(hb_font_t* font, const std::string& key);
    [[nodiscard]] PdfFont& at(FontId id) { return *fonts_[id]; }

    /// Writes all fonts that are used. The body of the resources' dictionary of fonts.
    [[nodiscard]] std::string write(PdfFile& file);

  private:
    std::map<std::string, FontId> ids_;
    std::vector<std::unique_ptr<PdfFont>> fonts_;
};

/// Appends the four digits that a letter of a font in the file is shown by.
void appendHexCode(std::string& text, hb_codepoint_t glyph);

}  // namespace vexa::frontend::pdf
