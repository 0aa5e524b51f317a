// Values as the subcommands of a modification read them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "backend/syntax/command_spec.h"
#include "module/frame/given_values.h"

namespace vexa {

/// The text of the parameter `name`; empty when it was not given or is no text.
[[nodiscard]] std::string textOf(const SubComObj& subcommand, std::string_view name);

/// The text with its date and time symbols replaced, escaped for the request.
[[nodiscard]] std::string expandedTextOf(const SubComObj& subcommand, std::string_view name);

/// The text in capitals, a value that is one operator included.
[[nodiscard]] std::string upperTextOf(const SubComObj& subcommand, std::string_view name);

/// The number that `text` begins with: blanks, a sign, digits; 0 when it begins otherwise. Numbers beyond 32
/// bits give the nearest that fits.
[[nodiscard]] std::int32_t leadingInteger(std::string_view text);

/// Cuts `list` at its first comma and gives what stood before it; what is behind the comma stays in `list`,
/// all of an empty text when there is none.
std::string_view takeField(std::string_view& list);

/// How many points the unit CENTIMETERS, INCHES or POINTS is, without regard to case; nothing for another
/// one.
[[nodiscard]] std::optional<double> pointsOfUnit(std::string_view unit);

}  // namespace vexa
