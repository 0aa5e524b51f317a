#include "frontend/modify/cell_condition.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace vexa::frontend {

namespace {

bool compares(double number, Comparison comparison, double with) {
    switch (comparison) {
        case Comparison::greater:
            return number > with;
        case Comparison::greaterOrEqual:
            return number >= with;
        case Comparison::less:
            return number < with;
        case Comparison::lessOrEqual:
            return number <= with;
        case Comparison::equal:
            return number == with;
        case Comparison::notEqual:
            break;
    }
    return number != with;
}

}  // namespace

const double* ConditionJudge::numberAt(tables::Place place) const {
    const tables::TableCell* const cell = data_.find(place);
    const bool isNumber =
        cell != nullptr && cell->kind == tables::CellKind::number && !std::isnan(cell->number);
    return isNumber ? &cell->number : nullptr;
}

void ConditionJudge::look(tables::Place place) {
    const bool ranks =
        condition_.kind == CellCondition::Kind::top || condition_.kind == CellCondition::Kind::bottom;
    if (!ranks) return;
    if (const double* const number = numberAt(place)) numbers_.push_back(*number);
}

void ConditionJudge::decide() {
    if (numbers_.empty() || condition_.count < 1) return;
    const std::size_t count = std::min(numbers_.size(), static_cast<std::size_t>(condition_.count));
    const auto edge = numbers_.begin() + static_cast<std::ptrdiff_t>(count - 1);
    if (condition_.kind == CellCondition::Kind::top) {
        std::nth_element(numbers_.begin(), edge, numbers_.end(), std::greater<>());
    } else {
        std::nth_element(numbers_.begin(), edge, numbers_.end());
    }
    edge_ = *edge;
    hasEdge_ = true;
}

bool ConditionJudge::meets(tables::Place place) const {
    if (condition_.kind == CellCondition::Kind::missing) return data_.isEmpty(data_.find(place));
    const double* const number = numberAt(place);
    if (number == nullptr) return false;
    switch (condition_.kind) {
        case CellCondition::Kind::top:
            return hasEdge_ && *number >= edge_;
        case CellCondition::Kind::bottom:
            return hasEdge_ && *number <= edge_;
        default:
            return compares(*number, condition_.comparison, condition_.number);
    }
}

}  // namespace vexa::frontend
