// A picture as lines, areas and texts, in the order in which they are drawn. Who reads a picture hands these
// to a target, which writes them in the form of a file.
//
// Places are in points from the upper left corner of the picture, downwards.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace vexa::frontend {

struct VectorPoint {
    double x = 0;
    double y = 0;

    bool operator==(const VectorPoint&) const = default;
};

/// x' = a x + c y + e, y' = b x + d y + f.
struct VectorMatrix {
    double a = 1;
    double b = 0;
    double c = 0;
    double d = 1;
    double e = 0;
    double f = 0;

    /// Applies this one first, then `next`.
    [[nodiscard]] VectorMatrix then(const VectorMatrix& next) const;
    [[nodiscard]] VectorPoint at(double x, double y) const { return {a * x + c * y + e, b * x + d * y + f}; }
    /// How much longer lengths become, on the average of all directions.
    [[nodiscard]] double scale() const;
};

/// Empty when left and right, or top and bottom, are crossed.
struct VectorBox {
    double left = 1e9;
    double top = 1e9;
    double right = -1e9;
    double bottom = -1e9;

    void take(VectorPoint point);
    [[nodiscard]] VectorBox within(const VectorBox& other) const;
    [[nodiscard]] bool isEmpty() const { return left >= right || top >= bottom; }
};

enum class PathStep : std::uint8_t { move, line, curve, close };

/// Three points of a curve (its end last), one of a move and a line, none of a close.
struct PathPart {
    PathStep step = PathStep::move;
    std::array<VectorPoint, 3> points{};
};

struct VectorPath {
    std::vector<PathPart> parts;

    [[nodiscard]] VectorBox box() const;
};

/// 0xRRGGBB.
using VectorColor = std::uint32_t;

enum class LineCap : std::uint8_t { flat, round, square };
enum class LineJoin : std::uint8_t { miter, round, bevel };

struct VectorLine {
    double width = 1;
    LineCap cap = LineCap::flat;
    LineJoin join = LineJoin::miter;
    double miterLimit = 10;
    std::vector<double> dashes;  ///< lengths of dash and gap in turn; empty for a whole line
    double dashBegin = 0;
};

struct VectorFont {
    std::string family;      ///< "DejaVu Sans", UTF-8
    std::string postScript;  ///< "DejaVuSans-Bold"
    bool bold = false;
    bool italic = false;

    bool operator==(const VectorFont&) const = default;
};

/// A text in one line, in the order in which it is read.
struct VectorText {
    VectorFont font;
    VectorPoint begin;  ///< on the base line
    double size = 0;    ///< of the font, points
    double angle = 0;   ///< of the base line, radians, turning left
    std::u32string text;
    std::vector<double> advances;  ///< behind each character, points along the base line
    VectorColor color = 0;
};

class VectorTarget {
  public:
    virtual ~VectorTarget() = default;

    /// Keeps what is clipped until `restore`.
    virtual void save() = 0;
    virtual void restore() = 0;
    /// Draws only within the path from now on.
    virtual void clip(const VectorPath& path, bool evenOdd) = 0;
    virtual void fill(const VectorPath& path, bool evenOdd, VectorColor color) = 0;
    virtual void stroke(const VectorPath& path, const VectorLine& line, VectorColor color) = 0;
    virtual void text(const VectorText& text) = 0;
    /// What cannot be told so (gradients, pictures, what shines through): the place looks as the finished
    /// picture does there.
    virtual void bitmap(const VectorBox& place) = 0;
};

}  // namespace vexa::frontend
