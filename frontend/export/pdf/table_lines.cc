#include "frontend/export/pdf/table_lines.h"

#include <algorithm>
#include <optional>

namespace vexa::frontend::pdf {

namespace {

using tables::BorderLine;
using tables::Color;
using tables::LineStyle;
using tables::ShownStyle;
using tables::TableGrid;

/// Lines by number; 0 is none.
class LineKinds {
  public:
    std::uint8_t of(const BorderLine& line) {
        if (line.style == LineStyle::none) return 0;
        const auto found = std::find(kinds_.begin(), kinds_.end(), line);
        if (found != kinds_.end()) return static_cast<std::uint8_t>(found - kinds_.begin() + 1);
        if (kinds_.size() == UINT8_MAX) return 1;
        kinds_.push_back(line);
        return static_cast<std::uint8_t>(kinds_.size());
    }
    [[nodiscard]] const BorderLine& line(std::uint8_t kind) const { return kinds_[kind - 1]; }

  private:
    std::vector<BorderLine> kinds_;
};

class Lines {
  public:
    Lines(PageCanvas& canvas, const std::vector<double>& columns, const std::vector<double>& rows)
        : canvas_(canvas),
          columns_(columns),
          rows_(rows),
          wide_(columns.size() - 1),
          high_(rows.size() - 1),
          across_(rows.size() * wide_),
          down_(columns.size() * high_) {}

    void add(const SeenCell& cell, const ShownStyle& style) {
        if (!cell.beginsAbove) addAcross(cell.firstRow, cell, style.borders[0]);
        if (!cell.endsBelow) addAcross(cell.endRow, cell, style.borders[2]);
        addDown(cell.endColumn, cell, style.borders[1]);
        addDown(cell.firstColumn, cell, style.borders[3]);
    }

    void draw() {
        for (std::size_t row = 0; row < rows_.size(); ++row) {
            for (std::size_t begin = 0; begin < wide_;) {
                const std::uint8_t kind = across_[row * wide_ + begin];
                std::size_t end = begin + 1;
                while (end < wide_ && across_[row * wide_ + end] == kind) ++end;
                if (kind != 0)
                    canvas_.line(columns_[begin], rows_[row], columns_[end], rows_[row], kinds_.line(kind));
                begin = end;
            }
        }
        for (std::size_t column = 0; column < columns_.size(); ++column) {
            for (std::size_t begin = 0; begin < high_;) {
                const std::uint8_t kind = down_[column * high_ + begin];
                std::size_t end = begin + 1;
                while (end < high_ && down_[column * high_ + end] == kind) ++end;
                if (kind != 0)
                    canvas_.line(columns_[column], rows_[begin], columns_[column], rows_[end],
                                 kinds_.line(kind));
                begin = end;
            }
        }
    }

  private:
    void addAcross(std::size_t row, const SeenCell& cell, const BorderLine& line) {
        const std::uint8_t kind = kinds_.of(line);
        if (kind == 0) return;
        for (std::size_t i = cell.firstColumn; i < cell.endColumn; ++i) across_[row * wide_ + i] = kind;
    }
    void addDown(std::size_t column, const SeenCell& cell, const BorderLine& line) {
        const std::uint8_t kind = kinds_.of(line);
        if (kind == 0) return;
        for (std::size_t i = cell.firstRow; i < cell.endRow; ++i) down_[column * high_ + i] = kind;
    }

    PageCanvas& canvas_;
    const std::vector<double>& columns_;
    const std::vector<double>& rows_;
    std::size_t wide_;
    std::size_t high_;
    LineKinds kinds_;
    std::vector<std::uint8_t> across_;  // by boundary of rows, then column
    std::vector<std::uint8_t> down_;    // by boundary of columns, then row
};

/// Grounds that touch and are alike are one.
class Grounds {
  public:
    explicit Grounds(PageCanvas& canvas) : canvas_(canvas) {}

    void add(const Box& box, Color color) {
        if (!open_.empty()) {
            Ground& last = open_.back();
            const bool isBeside = last.color == color && last.box.top == box.top &&
                                  last.box.height == box.height && last.box.right() >= box.left - 0.001;
            if (isBeside) {
                last.box.width = box.right() - last.box.left;
                return;
            }
        }
        open_.push_back({box, color});
    }

    void draw() {
        std::vector<Ground> joined;
        for (const Ground& each : open_) {
            const auto above = std::find_if(joined.rbegin(), joined.rend(), [&each](const Ground& other) {
                return other.color == each.color && other.box.left == each.box.left &&
                       other.box.width == each.box.width && other.box.bottom() >= each.box.top - 0.001 &&
                       other.box.top < each.box.top;
            });
            if (above != joined.rend() && above - joined.rbegin() < 8) {
                above->box.height = each.box.bottom() - above->box.top;
            } else {
                joined.push_back(each);
            }
        }
        for (const Ground& each : joined) canvas_.fill(each.box, each.color);
    }

  private:
    struct Ground {
        Box box;
        Color color;
    };
    PageCanvas& canvas_;
    std::vector<Ground> open_;
};

}  // namespace

void drawLines(PageCanvas& canvas, const TableGrid& grid, const std::vector<SeenCell>& cells,
               const std::vector<double>& columns, const std::vector<double>& rows) {
    if (columns.size() < 2 || rows.size() < 2) return;
    Grounds grounds(canvas);
    Lines lines(canvas, columns, rows);
    for (const SeenCell& cell : cells) {
        const ShownStyle& style = grid.style(grid.cells[cell.cell]);
        if (style.look.background) {
            const double left = columns[cell.firstColumn];
            const double top = rows[cell.firstRow];
            grounds.add({left, top, columns[cell.endColumn] - left, rows[cell.endRow] - top},
                        *style.look.background);
        }
        lines.add(cell, style);
    }
    canvas.beginArtifact("Layout");
    grounds.draw();
    lines.draw();
    canvas.end();
}

}  // namespace vexa::frontend::pdf
