// Lengths in points, the unit of the request.
#pragma once

#include <optional>
#include <string_view>

namespace vexa {

/// How many points the unit CENTIMETERS, INCHES or POINTS is, without regard to case; nothing for another
/// one.
[[nodiscard]] std::optional<double> pointsOfUnit(std::string_view unit);

}  // namespace vexa
