// What a modification would do, as tables of the output log.
#pragma once

#include <cstddef>
#include <string>

#include "frontend/modify/modification.h"

namespace vexa::frontend {

/// Puts a table into the log: for each item of the types that `group` (from 1) names whether it is selected,
/// what of it would change, and why something would not. A message where there is no such item.
void showPlan(const Modification& modification, std::size_t group, const std::string& documentName);

}  // namespace vexa::frontend
