#include "backend/tables/model/table.h"

#include <utility>

namespace vexa::tables {

namespace {

template <typename T>
bool isSame(const std::shared_ptr<const T>& left, const std::shared_ptr<const T>& right) {
    return left == right || *left == *right;
}

}  // namespace

bool Table::operator==(const Table& other) const {
    return isSame(data, other.data) && isSame(view, other.view) && isSame(style, other.style);
}

Table makeTable(std::shared_ptr<const TableData> data, TableView view, TableStyle style) {
    view.dimensions.resize(data->dimensions().size());
    return {std::move(data), std::make_shared<const TableView>(std::move(view)),
            std::make_shared<const TableStyle>(std::move(style))};
}

}  // namespace vexa::tables
