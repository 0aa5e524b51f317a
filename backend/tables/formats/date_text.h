// Dates and times as texts. For the number formats' own files.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "backend/tables/formats/display_format.h"

namespace vexa::tables {

/// Appends the finite number of `seconds` in a format whose kind `countsSeconds`; false, and nothing
/// appended, where it has no such text: a year below 1 or above 9999, 10^15 seconds or more.
[[nodiscard]] bool appendSeconds(std::string& out, double seconds, FormatKind kind);

/// The seconds that `text` shows in such a format; nothing where it shows no day of the calendar or no time.
[[nodiscard]] std::optional<double> parseSeconds(std::string_view text, FormatKind kind);

}  // namespace vexa::tables
