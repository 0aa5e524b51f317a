#include "backend/pivot/pivot_table.h"

#include <cassert>

namespace vexa {

PivotAxis PivotDimension::axis() const {
    switch (position[0]) {
        case 1:
            return PivotAxis::column;
        case 2:
            return PivotAxis::layer;
        default:
            return PivotAxis::row;
    }
}

std::vector<std::size_t> PivotTable::coordinates(std::uint64_t place) const {
    std::vector<std::size_t> indexes(dimensions.size());
    for (std::size_t dimension = dimensions.size(); dimension-- > 0;) {
        const std::uint64_t count = dimensions[dimension].categories.size();
        assert(count > 0);
        indexes[dimension] = static_cast<std::size_t>(place % count);
        place /= count;
    }
    assert(place == 0);
    return indexes;
}

std::uint64_t PivotTable::placeOf(const std::vector<std::size_t>& indexes) const {
    assert(indexes.size() == dimensions.size());
    std::uint64_t place = 0;
    for (std::size_t dimension = 0; dimension < dimensions.size(); ++dimension) {
        assert(indexes[dimension] < dimensions[dimension].categories.size());
        place = place * dimensions[dimension].categories.size() + indexes[dimension];
    }
    return place;
}

const PivotCellExtras& PivotTable::extrasOf(const PivotCell& cell) const {
    static const PivotCellExtras none;
    if (cell.extras == 0) return none;
    assert(cell.extras <= extras.size());
    return extras[cell.extras - 1];
}

}  // namespace vexa
