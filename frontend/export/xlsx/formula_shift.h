// Formulas of workbooks in other places than those that they were written for.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vexa::frontend {

/// The formula as it reads when it is copied so many rows down and columns to the right: references without
/// dollar signs move, and become `#REF!` where they leave the sheet. Texts, names and names of sheets stay.
[[nodiscard]] std::string shiftFormula(std::string_view formula, std::int64_t rows, std::int64_t columns);

}  // namespace vexa::frontend
