// Level 2 of PostScript that names its fonts: who prints or shows it has them.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "frontend/drawing/bitmap_source.h"
#include "frontend/drawing/vector_target.h"

namespace vexa::frontend {

/// The fonts of one file: each text is written in codes of a font that has its characters at these codes.
class PostScriptFonts {
  public:
    struct Piece {
        std::string font;    ///< what the file calls the font with these codes
        std::size_t length;  ///< characters
        std::string codes;
    };
    /// The text in pieces that one font has codes for.
    [[nodiscard]] std::vector<Piece> encode(const VectorFont& font, const std::u32string& text);
    /// What makes the fonts out of those that are named; names of these for the comments.
    [[nodiscard]] std::string definitions() const;
    [[nodiscard]] std::vector<std::string> names() const;

  private:
    struct Sheet {
        std::string name;
        std::string base;
        std::map<unsigned char, std::string> glyphs;  ///< names by code
    };
    struct Face {
        std::vector<std::size_t> sheets;
        std::map<char32_t, std::pair<std::size_t, unsigned char>> codes;
    };
    std::pair<std::size_t, unsigned char> codeOf(const std::string& base, Face& face, char32_t character);
    std::size_t addSheet(const std::string& base, Face& face);

    std::vector<Sheet> sheets_;
    std::map<std::string, Face> faces_;
};

class PostScriptTarget : public VectorTarget {
  public:
    /// `height` of the picture, points.
    PostScriptTarget(double height, BitmapSource& bitmaps) : height_(height), bitmaps_(bitmaps) {}

    void save() override;
    void restore() override;
    void clip(const VectorPath& path, bool evenOdd) override;
    void fill(const VectorPath& path, bool evenOdd, VectorColor color) override;
    void stroke(const VectorPath& path, const VectorLine& line, VectorColor color) override;
    void text(const VectorText& text) override;
    void bitmap(const VectorBox& place) override;

    /// There is text, and all of it can be written by naming fonts: letters that take other forms beside
    /// each other cannot.
    [[nodiscard]] bool suits() const { return hasText_ && !needsForms_; }
    /// The whole file for a picture that leaves ink in that box.
    [[nodiscard]] std::string file(const VectorBox& ink, double width) const;

  private:
    void path(const VectorPath& path);
    void point(VectorPoint point);
    void number(double value);
    void color(VectorColor color);

    double height_;
    BitmapSource& bitmaps_;
    PostScriptFonts fonts_;
    std::string body_;
    bool hasText_ = false;
    bool needsForms_ = false;
};

}  // namespace vexa::frontend
