// Prints a document in the JSON form (docs/formats/results-json.md), which `readResults` reads.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "frontend/document/outline.h"
#include "frontend/import/statistic_words.h"

namespace vexa::frontend {

/// The whole document; what is default is not printed. `words` are those that a reader will infer roles with.
///
/// A table is printed as it is arranged: dimensions and categories in the order shown. So the table that is
/// read again has its data in that order, and shows the same.
/// `sink` takes the text piece by piece: that of a small document can be very long.
using ResultsSink = std::function<void(std::string_view)>;
void writeResults(const Outline& outline, const std::string& name, const StatisticWords& words,
                  const ResultsSink& sink);
[[nodiscard]] std::string writeResults(const Outline& outline, const std::string& name,
                                       const StatisticWords& words);

}  // namespace vexa::frontend
