// What holds while a drawn page is read: places, colours, lines, and where the next text stands.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "frontend/drawing/qpdf_library.h"
#include "frontend/drawing/vector_fonts.h"
#include "frontend/drawing/vector_target.h"

namespace vexa::frontend {

struct VectorPaint {
    bool solid = true;  ///< one colour; otherwise a gradient or a pattern
    VectorColor color = 0;
};

struct VectorState {
    VectorMatrix matrix;
    VectorBox clip;  ///< nothing is drawn outside
    VectorPaint fill;
    VectorPaint stroke;
    VectorLine line;  ///< in the units of the matrix
    double fillAlpha = 1;
    double strokeAlpha = 1;
    bool masked = false;
    bool blended = false;
    bool textsOnly = false;  ///< the rest is in a bitmap
    double groupAlpha = 1;   ///< of what the bitmap shows

    [[nodiscard]] VectorPaint& paint(bool ofLines) { return ofLines ? stroke : fill; }
    /// Nothing shines through.
    [[nodiscard]] bool isOpaque(bool ofLines) const;
    /// Drawn in one colour that hides what is below.
    [[nodiscard]] bool showsSolid(bool ofLines) const;
    /// The colour that a text has on white.
    [[nodiscard]] VectorColor textColor() const;
};

[[nodiscard]] VectorColor colorOf(double red, double green, double blue);
[[nodiscard]] VectorMatrix matrixOf(const QPDFObjectHandle& numbers);
/// A box of a form, seen through a matrix.
[[nodiscard]] VectorBox boxOf(const QPDFObjectHandle& numbers, const VectorMatrix& matrix);
/// Where a picture stands.
[[nodiscard]] VectorBox unitBox(const VectorMatrix& matrix);

/// Glyphs one behind the other.
class TextRun {
  public:
    /// `matrix` is where the text begins.
    TextRun(const VectorMatrix& matrix, double size) : begin_(matrix), size_(size) {}

    void add(const std::vector<VectorGlyph>& glyphs);
    /// Moves what follows, in sizes of the font.
    void move(double distance);
    /// Takes up the glyphs of a run that goes on.
    void join(const TextRun& other);
    /// All glyphs together stand for this text.
    void replaceText(const std::u32string& text);
    /// Where the next text begins.
    [[nodiscard]] VectorMatrix behind() const;
    /// The text as it stands on the page; nothing without characters. Font and colour are not set.
    [[nodiscard]] std::optional<VectorText> text(const VectorMatrix& page) const;

  private:
    /// How far the base line goes on the page for a size of the font, and the way from where it begins to a
    /// place, in sizes of the font.
    [[nodiscard]] double distanceTo(const VectorMatrix& place) const;
    /// Brings the characters into the order in which they are read, with what each goes on.
    void order(std::u32string& text, std::vector<double>& advances, double& begin) const;

    VectorMatrix begin_;
    double size_;
    double length_ = 0;  // in sizes of the font, as the following
    std::u32string text_;
    std::vector<double> places_;  // of each character, from the beginning
    std::vector<double> widths_;
    bool replaced_ = false;  // the text is as it is read
};

}  // namespace vexa::frontend
