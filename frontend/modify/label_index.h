// The index that is appended to the labels of selected items.
#pragma once

#include <cstdint>
#include <string>

#include "frontend/requests/modify_request.h"

namespace vexa::frontend {

/// `number` in a notation. Letters go a ... z aa ab; Roman numerals to 3999, beyond that decimal; 0 and
/// negative numbers are decimal in every notation.
[[nodiscard]] std::string indexText(IndexNotation notation, std::int64_t number);

}  // namespace vexa::frontend
