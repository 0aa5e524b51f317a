#include "frontend/export/slides/slide_enlarging.h"

#include <algorithm>
#include <numeric>

namespace vexa::frontend {

namespace {

using tables::GridCell;
using tables::ShownStyle;
using tables::TableGrid;

/// Less is not seen.
constexpr double leastEnlargement = 1.1;
/// Letters are not exactly as wide as was estimated for their size.
constexpr double spare = 0.98;

bool setsSizes(const TableGrid& grid) {
    const auto isSet = [](const std::optional<double>& width) { return width.has_value(); };
    return std::any_of(grid.widths.begin(), grid.widths.end(), isSet) ||
           std::any_of(grid.cells.begin(), grid.cells.end(),
                       [&](const GridCell& cell) { return isSet(grid.style(cell).own.size); });
}

double largestLetters(const TableGrid& grid) {
    double largest = 1;
    for (const GridCell& cell : grid.cells) largest = std::max(largest, grid.style(cell).look.size);
    return largest;
}

std::optional<double> worthwhile(double factor) {
    if (factor < leastEnlargement) return std::nullopt;
    return factor;
}

}  // namespace

std::optional<double> enlargementOf(const TableGrid& grid, const TableFit& fit, const SlideBox& room,
                                    double around) {
    if (fit.parts.size() != 1 || fit.columnsCut || fit.textsCut) return std::nullopt;
    const TablePart& part = fit.parts.front();
    const double width = std::accumulate(part.widths.begin(), part.widths.end(), 0.0);
    const double height = part.height + around;
    if (part.scale != 1 || width <= 0 || height <= 0 || setsSizes(grid)) return std::nullopt;
    const double fits = std::min(room.width / width, room.height / height) * spare;
    return worthwhile(std::min(fits, mostCellSize / largestLetters(grid)));
}

TableGrid enlarged(const TableGrid& grid, double factor) {
    TableGrid larger = grid;
    for (ShownStyle& style : larger.styles) {
        tables::AreaLook& look = style.look;
        if (!style.own.size) look.size *= factor;
        for (double* const margin :
             {&look.marginLeft, &look.marginRight, &look.marginTop, &look.marginBottom}) {
            *margin *= factor;
        }
    }
    for (std::optional<double>* const each :
         {&larger.minColumnWidth, &larger.maxColumnWidth, &larger.maxLabelWidth}) {
        if (*each) *each = **each * factor;
    }
    return larger;
}

std::optional<double> nextEnlargement(double factor) { return worthwhile(factor * 0.92); }

}  // namespace vexa::frontend
