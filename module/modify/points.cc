#include "module/modify/points.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "backend/syntax/command_spec.h"

namespace vexa {

std::optional<double> pointsOfUnit(std::string_view unit) {
    constexpr std::pair<std::string_view, double> kUnits[] = {
        {"CENTIMETERS", 28.3464567}, {"INCHES", 72.0}, {"POINTS", 1.0}};
    const auto* const found = std::find_if(std::begin(kUnits), std::end(kUnits), [unit](const auto& each) {
        return AreStringsEqualCase(each.first, unit);
    });
    return found == std::end(kUnits) ? std::nullopt : std::optional(found->second);
}

}  // namespace vexa
