#include "backend/tables/model/table_view.h"

#include <algorithm>
#include <numeric>

namespace vexa::tables {

const std::vector<DimensionId>& TableView::axis(Axis which) const {
    switch (which) {
        case Axis::row:
            return rows;
        case Axis::column:
            return columns;
        case Axis::layer:
            break;
    }
    return layers;
}

std::vector<DimensionId> TableView::formatOrder() const {
    std::vector<DimensionId> order(columns.rbegin(), columns.rend());
    order.insert(order.end(), rows.rbegin(), rows.rend());
    order.insert(order.end(), layers.rbegin(), layers.rend());
    return order;
}

std::vector<CategoryId> shownCategories(const TableDimension& dimension, const DimensionView& view) {
    std::vector<CategoryId> shown = view.order;
    if (shown.empty()) {
        shown.resize(dimension.categories.size());
        std::iota(shown.begin(), shown.end(), CategoryId{0});
    }
    if (!view.hidden.empty()) {
        shown.erase(
            std::remove_if(shown.begin(), shown.end(), [&](CategoryId id) { return view.isHidden(id); }),
            shown.end());
    }
    return shown;
}

}  // namespace vexa::tables
