// Which of the chosen cells meet a condition on their values.
#pragma once

#include <unordered_map>
#include <vector>

#include "backend/tables/model/table_data.h"
#include "frontend/requests/modify_request.h"

namespace vexa::frontend {

/// Whether a condition leaves anything out.
[[nodiscard]] constexpr bool isConditional(const CellCondition& condition) {
    return condition.kind != CellCondition::Kind::none && condition.kind != CellCondition::Kind::all;
}

/// First looks at every chosen cell, then decides, then answers.
class ConditionJudge {
  public:
    /// Both must live as long.
    ConditionJudge(const tables::TableData& data, const CellCondition& condition)
        : data_(data), condition_(condition) {}

    void look(tables::Place place);
    /// Finds the edge of the greatest or least numbers; cells equal to it all count.
    void decide();
    [[nodiscard]] bool meets(tables::Place place) const;

  private:
    [[nodiscard]] const double* numberAt(tables::Place place) const;

    const tables::TableData& data_;
    const CellCondition& condition_;
    std::vector<double> numbers_;
    double edge_ = 0;
    bool hasEdge_ = false;
};

}  // namespace vexa::frontend
