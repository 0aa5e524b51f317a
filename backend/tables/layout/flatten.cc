#include <string>
#include <utility>
#include <vector>

#include "backend/tables/layout/table_grid.h"

namespace vexa::tables {

namespace {

class Flattening {
  public:
    /// `layers` grids that each have the rows and columns of `layout`.
    Flattening(const TableLayout& layout, std::size_t layers, bool sayLayers)
        : rows_(layout.rows()), columns_(layout.columns()), layers_(layers), saysLayers_(sayLayers) {}

    [[nodiscard]] bool fits() const {
        if (columns_ == 0) return true;
        const std::size_t rows = rows_ + (saysLayers_ ? 1 : 0);
        return layers_ <= maximalFlatCells / rows && layers_ * rows <= maximalFlatCells / columns_;
    }

    void add(const TableGrid& grid);
    [[nodiscard]] bool isTooLong() const { return bytes_ > maximalFlatBytes; }
    [[nodiscard]] FlatTable finish();

  private:
    FlatCell& at(std::size_t row, std::size_t column) { return flat_.cells[row * columns_ + column]; }
    void addRows(const TableGrid& grid, std::size_t begin, std::size_t end);
    [[nodiscard]] StyleId styleOf(const TableGrid& grid, const GridCell& cell);
    void setText(FlatCell& cell, std::string text);
    void addNotes(const TableGrid& grid);

    std::size_t rows_;
    std::size_t columns_;
    std::size_t layers_;
    bool saysLayers_;
    std::size_t bytes_ = 0;
    FlatTable flat_;
    TableStyle styles_;                  // finds equal styles
    std::vector<std::string> notes_;     // in the order of their letters
    std::vector<std::string> unmarked_;  // those without
};

void Flattening::setText(FlatCell& cell, std::string text) {
    bytes_ += text.size();
    cell.text = std::move(text);
}

StyleId Flattening::styleOf(const TableGrid& grid, const GridCell& cell) {
    const CellStyle& own = grid.style(cell).own;
    if (own.isEmpty()) return 0;
    const StyleId id = styles_.intern(own);
    if (id >= flat_.styles.size()) flat_.styles.push_back(own);
    return id;
}

void Flattening::addRows(const TableGrid& grid, std::size_t begin, std::size_t end) {
    const std::size_t first = flat_.rows();
    flat_.cells.resize(flat_.cells.size() + (end - begin) * columns_);
    for (std::size_t row = begin; row < end; ++row) {
        for (const GridCell& cell : grid.row(row)) {
            // Very many cells may show the same long text, which each of them gets for itself here.
            if (isTooLong()) return;
            FlatCell& flat = at(first + row - begin, cell.column);
            flat.style = styleOf(grid, cell);
            setText(flat, std::string(grid.text(cell)) + grid.markText(cell));
        }
    }
}

void Flattening::add(const TableGrid& grid) {
    if (flat_.columns == 0) {
        flat_.title = grid.title.text;
        flat_.caption = grid.caption.text;
        flat_.columns = columns_;
        flat_.headerRows = grid.headerRows;
        flat_.headerColumns = grid.labelColumns;
        addRows(grid, 0, grid.headerRows);
    }
    if (saysLayers_ && columns_ > 0) {
        flat_.cells.resize(flat_.cells.size() + columns_);
        setText(at(flat_.rows() - 1, 0), grid.layer.text);
    }
    addRows(grid, grid.headerRows, grid.rows);
    addNotes(grid);
}

/// Each footnote is listed by one grid only.
void Flattening::addNotes(const TableGrid& grid) {
    for (const GridFootnote& note : grid.footnotes) {
        if (note.mark.empty()) {
            unmarked_.push_back(note.text);
        } else {
            notes_.push_back('[' + note.mark + "] " + note.text);
        }
        bytes_ += note.text.size();
    }
}

FlatTable Flattening::finish() {
    notes_.insert(notes_.end(), unmarked_.begin(), unmarked_.end());
    for (const std::string& note : notes_) {
        flat_.caption.append(flat_.caption.empty() ? "" : "\n").append(note);
    }
    return std::move(flat_);
}

}  // namespace

std::optional<FlatTable> flatten(const Table& table) {
    LayoutOptions options;
    options.lettersGoOn = true;
    TableLayout layout(table, options);
    const std::vector<Place> layers = layersOf(table, LayerChoice::all);
    Flattening flattening(layout, layers.size(), !table.view->layers.empty());
    if (!layout.fits() || !flattening.fits()) return std::nullopt;
    for (const Place layer : layers) {
        flattening.add(layout.grid(layer));
        if (flattening.isTooLong()) return std::nullopt;
        if (layout.columns() == 0) break;  // they are all alike
    }
    return flattening.finish();
}

}  // namespace vexa::tables
