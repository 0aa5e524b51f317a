#include "frontend/export/pdf/table_painter.h"

#include <algorithm>

namespace vexa::frontend::pdf {

namespace {

using tables::AreaLook;
using tables::GridCell;
using tables::GridRole;
using tables::HorizontalAlign;
using tables::TableGrid;
using tables::VerticalAlign;

constexpr double markRise = 0.35;  // of the text's size

double alignedAt(HorizontalAlign align, bool alignsRight, double left, double free) {
    const bool isRight = align == HorizontalAlign::right || (align == HorizontalAlign::mixed && alignsRight);
    if (isRight) return left + free;
    return align == HorizontalAlign::center ? left + free / 2 : left;
}

}  // namespace

TablePainter::TablePainter(const TableGrid& grid, TableMeasures& measures, TextShaper& shaper,
                           StructureTree& structure, PageFlow& flow)
    : grid_(grid),
      measures_(measures),
      shaper_(shaper),
      structure_(structure),
      flow_(flow),
      table_(structure.open("Table", structure.document())),
      isTagged_(grid.cells.size()) {
    for (const GridCell& cell : grid_.cells) {
        isNested_ = isNested_ || (cell.role == GridRole::columnLabel && cell.columnSpan > 1) ||
                    (cell.role == GridRole::rowLabel && cell.rowSpan > 1);
    }
    findCovers();
    if (isNested_) {
        columnHeaders_.resize(grid_.columns);
        rowHeaders_.resize(grid_.rows);
    }
}

std::uint32_t TablePainter::position(std::uint32_t row, const TablePart& part) const {
    return row < part.headerRows ? row : part.headerRows + row - part.firstRow;
}

/// Appends the cell as far as it stands in the part.
void TablePainter::see(std::size_t index, const TablePart& part, std::vector<SeenCell>& seen) const {
    const GridCell& cell = grid_.cells[index];
    const bool isHeader = cell.row < part.headerRows;
    const std::uint32_t firstRow = isHeader ? cell.row : std::max(cell.row, part.firstRow);
    const std::uint32_t endRow = std::min(cell.row + cell.rowSpan, isHeader ? part.headerRows : part.endRow);
    if (firstRow >= endRow) return;
    SeenCell one;
    one.cell = index;
    one.firstRow = position(firstRow, part);
    one.endRow = one.firstRow + endRow - firstRow;
    one.beginsAbove = firstRow > cell.row;
    one.endsBelow = endRow < cell.row + cell.rowSpan;
    const std::uint32_t end = cell.column + cell.columnSpan;
    if (cell.column < grid_.labelColumns) {
        one.firstColumn = cell.column;
        one.endColumn = std::min(end, grid_.labelColumns);
    } else {
        const std::uint32_t from = std::max(cell.column, part.columns.begin);
        const std::uint32_t to = std::min(end, part.columns.end);
        if (from >= to) return;
        one.firstColumn = grid_.labelColumns + from - part.columns.begin;
        one.endColumn = grid_.labelColumns + to - part.columns.begin;
    }
    seen.push_back(one);
}

std::vector<SeenCell> TablePainter::cellsOf(const TablePart& part) const {
    std::vector<SeenCell> seen;
    for (std::size_t i = 0; part.headerRows > 0 && i < grid_.rowBegin[part.headerRows]; ++i)
        see(i, part, seen);
    // Labels that began earlier stand before the first row again.
    std::size_t last = SIZE_MAX;
    for (std::uint32_t i = 0; i < grid_.labelColumns && part.firstRow < part.endRow; ++i) {
        const std::size_t cover = covers_[std::size_t{part.firstRow} * grid_.labelColumns + i];
        const std::uint32_t row = grid_.cells[cover].row;
        if (cover != last && row >= part.headerRows && row < part.firstRow) see(cover, part, seen);
        last = cover;
    }
    for (std::size_t i = grid_.rowBegin[part.firstRow]; i < grid_.rowBegin[part.endRow]; ++i)
        see(i, part, seen);
    return seen;
}

void TablePainter::findCovers() {
    covers_.assign(std::size_t{grid_.rows} * grid_.labelColumns, 0);
    for (std::size_t i = 0; i < grid_.cells.size(); ++i) {
        const GridCell& cell = grid_.cells[i];
        const std::uint32_t end = std::min(cell.column + cell.columnSpan, grid_.labelColumns);
        for (std::uint32_t row = cell.row; row < cell.row + cell.rowSpan; ++row) {
            for (std::uint32_t column = cell.column; column < end; ++column) {
                covers_[std::size_t{row} * grid_.labelColumns + column] = static_cast<std::uint32_t>(i);
            }
        }
    }
}

void TablePainter::place(const TablePart& part) {
    columnEdges_.assign(1, flow_.left());
    for (std::uint32_t i = 0; i < grid_.labelColumns; ++i) {
        columnEdges_.push_back(columnEdges_.back() + measures_.columnWidth(i));
    }
    for (std::uint32_t i = part.columns.begin; i < part.columns.end; ++i) {
        columnEdges_.push_back(columnEdges_.back() + measures_.columnWidth(i));
    }
    rowEdges_.assign(1, flow_.y());
    for (std::uint32_t i = 0; i < part.headerRows; ++i) {
        rowEdges_.push_back(rowEdges_.back() + measures_.rowHeight(i));
    }
    for (std::uint32_t i = part.firstRow; i < part.endRow; ++i) {
        rowEdges_.push_back(rowEdges_.back() +
                            (part.cutHeight > 0 ? part.cutHeight : measures_.rowHeight(i)));
    }
}

bool TablePainter::draw(const TablePart& part) {
    place(part);
    std::vector<SeenCell> cells = cellsOf(part);
    for (SeenCell& each : cells) {
        const bool isCut = part.cutHeight > 0 && grid_.cells[each.cell].row >= part.headerRows;
        each.beginsAbove = each.beginsAbove || (isCut && open_.find(each.cell) != open_.end());
    }
    drawLines(flow_.canvas(), grid_, cells, columnEdges_, rowEdges_);
    for (const SeenCell& each : cells) drawCell(each, part);
    bool isWhole = true;
    if (part.cutHeight > 0) {
        for (const SeenCell& each : cells) {
            isWhole = isWhole && (open_.find(each.cell) == open_.end() || each.endsBelow);
        }
    }
    if (isWhole) closeRows(part);
    flow_.advance(rowEdges_.back() - rowEdges_.front());
    return isWhole;
}

StructureElement& TablePainter::rowElement(std::uint32_t row) {
    const auto found = rows_.find(row);
    if (found != rows_.end()) return found->second;
    const bool isHead = row < grid_.headerRows;
    StructureElement& group = isHead ? head_ : body_;
    if (group.number == 0) group = structure_.open(isHead ? "THead" : "TBody", table_);
    return rows_.emplace(row, structure_.open("TR", group)).first->second;
}

void TablePainter::setHeaders(const GridCell& cell, StructureElement& element) const {
    const std::string& ofColumn = columnHeaders_[cell.column];
    const std::string& ofRow = rowHeaders_[cell.row];
    if (!ofColumn.empty() || !ofRow.empty()) {
        element.attributes = "/A<</O/Table/Headers[" + ofColumn + ofRow + "]>>";
    }
}

StructureElement TablePainter::openCell(const GridCell& cell, std::size_t index) {
    isTagged_[index] = true;
    const bool isHeading = cell.role == GridRole::columnLabel || cell.role == GridRole::rowLabel ||
                           (cell.role == GridRole::corner && cell.textLength > 0);
    StructureElement element = structure_.open(isHeading ? "TH" : "TD", rowElement(cell.row));
    if (cell.role == GridRole::data) {
        if (isNested_) setHeaders(cell, element);
        return element;
    }
    std::string entries;
    if (isHeading) entries += cell.role == GridRole::rowLabel ? "/Scope/Row" : "/Scope/Column";
    if (cell.columnSpan > 1) entries += "/ColSpan " + std::to_string(cell.columnSpan);
    if (cell.rowSpan > 1) entries += "/RowSpan " + std::to_string(cell.rowSpan);
    if (!entries.empty()) element.attributes = "/A<</O/Table" + entries + ">>";
    if (!isNested_ || cell.role == GridRole::corner || cell.textLength == 0) return element;
    const std::string name = "(" + structure_.nameElement(element) + ")";
    if (cell.role == GridRole::columnLabel) {
        for (std::uint32_t i = 0; i < cell.columnSpan; ++i) columnHeaders_[cell.column + i] += name;
    } else {
        for (std::uint32_t i = 0; i < cell.rowSpan; ++i) rowHeaders_[cell.row + i] += name;
    }
    return element;
}

void TablePainter::drawCell(const SeenCell& seen, const TablePart& part) {
    const GridCell& cell = grid_.cells[seen.cell];
    const Box box{columnEdges_[seen.firstColumn], rowEdges_[seen.firstRow],
                  columnEdges_[seen.endColumn] - columnEdges_[seen.firstColumn],
                  rowEdges_[seen.endRow] - rowEdges_[seen.firstRow]};
    const bool isCut = part.cutHeight > 0 && cell.row >= part.headerRows;
    const Stop stop = isCut ? Stop::behindOneLine : seen.endsBelow ? Stop::anywhere : Stop::never;
    const auto goesOn = open_.find(seen.cell);
    if (goesOn == open_.end() && isTagged_[seen.cell]) {
        // Of a row that is cut, labels alone are shown again.
        if (!isCut || cell.role == GridRole::rowLabel) drawText(cell, box, 0, Stop::anywhere, nullptr);
        return;
    }
    StructureElement element = goesOn == open_.end() ? openCell(cell, seen.cell) : goesOn->second.element;
    const std::size_t first = goesOn == open_.end() ? 0 : goesOn->second.linesDone;
    const std::size_t done = drawText(cell, box, first, stop, &element);
    if (done == SIZE_MAX) {
        structure_.close(element);
        open_.erase(seen.cell);
    } else {
        open_[seen.cell] = {std::move(element), done};
    }
}

std::size_t TablePainter::drawText(const GridCell& cell, const Box& box, std::size_t first, Stop stop,
                                   StructureElement* element) {
    if (cell.textLength == 0 && cell.marks == 0) return SIZE_MAX;
    const AreaLook& look = grid_.style(cell).look;
    const double marks = measures_.markRoom(cell);
    const double inner = box.width - look.marginLeft - look.marginRight - marks;
    const ShapedText& text = shaper_.wrapped(measures_.textStyle(cell.style), grid_.text(cell), inner);
    double height = text.height;
    for (std::size_t i = 0; i < first; ++i) height -= text.lines[i].height();
    const double room = box.height - look.marginTop - look.marginBottom;
    const double free = std::max(0.0, room - height);
    double y = box.top + look.marginTop;
    if (look.vertical != VerticalAlign::top) y += look.vertical == VerticalAlign::center ? free / 2 : free;
    PageCanvas& canvas = flow_.canvas();
    if (element != nullptr) {
        flow_.beginContent(*element);
    } else {
        canvas.beginArtifact("Pagination");
    }
    const double bottom = box.bottom() + 0.1;
    double x = 0;
    double baseline = 0;
    std::size_t line = first;
    for (; line < text.lines.size(); ++line) {
        const ShapedLine& each = text.lines[line];
        const bool mayStop = stop == Stop::anywhere || (stop == Stop::behindOneLine && line > first);
        if (mayStop && y + each.height() > bottom) break;
        x = alignedAt(look.horizontal, cell.alignsRight, box.left + look.marginLeft, inner - each.width);
        baseline = y + each.ascent;
        canvas.text(each, look.size, look.color, x, baseline);
        if (look.underline) {
            canvas.line(x, baseline + look.size * 0.12, x + each.width, baseline + look.size * 0.12,
                        {tables::LineStyle::thin, look.color});
        }
        y += each.height();
        x += each.width;
    }
    const bool isWhole = line == text.lines.size();
    canvas.end();
    if (isWhole && cell.marks != 0) drawMarks(cell, x, baseline, element);
    return isWhole ? SIZE_MAX : line;
}

void TablePainter::drawMarks(const GridCell& cell, double x, double baseline, StructureElement* element) {
    const AreaLook& look = grid_.style(cell).look;
    const double size = look.size * markScale;
    const TextStyleId style = measures_.markStyle(cell.style);
    x += measures_.markWidth(cell) - shaper_.lines(style, marksText(grid_.marks[cell.marks - 1])).width;
    bool isFirst = true;
    for (const std::string& mark : grid_.marks[cell.marks - 1]) {
        const ShapedText& text = shaper_.lines(style, (isFirst ? "" : ",") + mark);
        isFirst = false;
        const ShapedLine& line = text.lines[0];
        const Box box{x, baseline - look.size * markRise - line.ascent, line.width, line.height()};
        if (element == nullptr) {
            flow_.canvas().beginArtifact("Pagination");
            flow_.canvas().text(line, size, look.color, x, baseline - look.size * markRise);
            flow_.canvas().end();
        } else {
            StructureElement reference = structure_.open("Reference", *element);
            StructureElement link = structure_.open("Link", reference);
            flow_.beginContent(link);
            flow_.canvas().text(line, size, look.color, x, baseline - look.size * markRise);
            flow_.canvas().end();
            marks_.push_back({mark, flow_.addLink(box, link), {flow_.tagged().number, box.left, box.top}});
            structure_.close(link);
            structure_.close(reference);
        }
        x += line.width;
    }
}

void TablePainter::closeRows(const TablePart& part) {
    if (!part.isLastRange) return;
    while (!rows_.empty() && rows_.begin()->first < part.endRow) {
        structure_.close(rows_.begin()->second);
        rows_.erase(rows_.begin());
    }
}

void TablePainter::finish() {
    for (auto& [cell, open] : open_) structure_.close(open.element);
    for (auto& [row, element] : rows_) structure_.close(element);
    if (head_.number != 0) structure_.close(head_);
    if (body_.number != 0) structure_.close(body_);
    structure_.close(table_);
}

}  // namespace vexa::frontend::pdf
