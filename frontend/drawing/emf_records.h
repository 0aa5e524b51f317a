// The records of an enhanced metafile, one after the other. Numbers are little-endian; places are in
// hundredths of a point.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/drawing/bitmap.h"
#include "frontend/drawing/vector_target.h"

namespace vexa::frontend {

/// Which records there are.
enum class EmfRecord : std::uint32_t {
    header = 1,
    polyBezierTo = 5,
    setWindowExtent = 9,
    setWindowOrigin = 10,
    setViewportExtent = 11,
    setViewportOrigin = 12,
    endOfFile = 14,
    setMapMode = 17,
    setBackgroundMode = 18,
    setFillMode = 19,
    setStretchMode = 21,
    setTextAlign = 22,
    setTextColor = 24,
    moveTo = 27,
    saveDevice = 33,
    restoreDevice = 34,
    selectObject = 37,
    createBrush = 39,
    lineTo = 54,
    setMiterLimit = 58,
    beginPath = 59,
    endPath = 60,
    closeFigure = 61,
    fillPath = 62,
    strokePath = 64,
    selectClipPath = 67,
    stretchBitmap = 81,
    createFont = 82,
    text = 84,
    createPen = 95,
};

class EmfRecords {
  public:
    /// The size of the picture, points; its name is in the header.
    EmfRecords(double width, double height);

    void save();
    void restore();
    void clip(const VectorPath& path, bool evenOdd);
    void fill(const VectorPath& path, bool evenOdd, VectorColor color);
    /// A whole line: dashes are pieces of the path.
    void stroke(const VectorPath& path, const VectorLine& line, VectorColor color);
    void text(const VectorText& text);
    /// Pixels from the top, which fill the place.
    void bitmap(const VectorBox& place, const Bitmap& bitmap);

    /// The file; nothing is added afterwards.
    [[nodiscard]] std::string finish();

  private:
    class Record;
    void add(EmfRecord type, std::initializer_list<std::int64_t> values);
    void path(const VectorPath& path);
    void select(std::uint32_t object);
    /// The number of an object that this record makes, made where there was no equal one.
    std::uint32_t object(EmfRecord type, const std::string& content);
    std::uint32_t fontOf(const VectorText& text);
    /// UTF-16 and the advance of each unit; how many these are.
    static std::int64_t appendCharacters(const VectorText& text, std::string& characters,
                                         std::string& advances);
    void setFillMode(bool evenOdd);
    void setTextColor(VectorColor color);
    [[nodiscard]] std::string header(std::size_t bytes) const;

    double width_;
    double height_;
    std::string records_;
    std::uint32_t count_ = 0;
    std::map<std::string, std::uint32_t> objects_;
    /// What is set, where it is known: not behind a `restore`.
    std::map<std::uint32_t, std::uint32_t> selected_;  // by kind of object
    std::int64_t fillMode_ = -1;
    std::int64_t textColor_ = -1;
    std::int64_t miterLimit_ = -1;
};

}  // namespace vexa::frontend
