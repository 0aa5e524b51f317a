#include "module/modify/parameter_values.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

#include "module/frame/date_time_symbols.h"
#include "module/frame/xml_text.h"

namespace vexa {

std::string textOf(const SubComObj& subcommand, std::string_view name) {
    const ParamObj* const parameter = subcommand.getParamObj(name);
    const std::optional<TextValue> value = parameter != nullptr ? textValue(*parameter) : std::nullopt;
    return value ? std::string(value->text) : std::string();
}

std::string expandedTextOf(const SubComObj& subcommand, std::string_view name) {
    return escapeXml(ExpandDateTimeSymbols(textOf(subcommand, name)));
}

std::string upperTextOf(const SubComObj& subcommand, std::string_view name) {
    const ParamObj* const parameter = subcommand.getParamObj(name);
    return parameter != nullptr ? parameter->getUpStringToken() : std::string();
}

std::int32_t leadingInteger(std::string_view text) {
    constexpr std::int64_t kGreatest = std::numeric_limits<std::int32_t>::max();
    const auto begin = std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size());
    text.remove_prefix(begin);
    const bool negative = text.starts_with('-');
    text.remove_prefix(negative || text.starts_with('+') ? 1 : 0);
    std::int64_t number = 0;
    for (const char digit : text) {
        if (digit < '0' || digit > '9') {
            break;
        }
        number = std::min<std::int64_t>(number * 10 + (digit - '0'), kGreatest + (negative ? 1 : 0));
    }
    return static_cast<std::int32_t>(negative ? -number : number);
}

std::string_view takeField(std::string_view& list) {
    const std::size_t comma = std::min(list.find(','), list.size());
    const std::string_view field = list.substr(0, comma);
    list.remove_prefix(std::min(comma + 1, list.size()));
    return field;
}

std::optional<double> pointsOfUnit(std::string_view unit) {
    constexpr std::pair<std::string_view, double> kUnits[] = {
        {"CENTIMETERS", 28.3464567}, {"INCHES", 72.0}, {"POINTS", 1.0}};
    const auto* const found = std::find_if(std::begin(kUnits), std::end(kUnits), [unit](const auto& each) {
        return AreStringsEqualCase(each.first, unit);
    });
    return found == std::end(kUnits) ? std::nullopt : std::optional(found->second);
}

}  // namespace vexa
