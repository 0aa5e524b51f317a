// The grammar of a command as a table: what its syntax table says, row by row.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "backend/syntax/descriptors.h"

namespace vexa {

/// Keyword values that many parameters share.
inline constexpr std::string_view kYesNo[] = {"YES", "NO"};
inline constexpr std::string_view kNoYes[] = {"NO", "YES"};
inline constexpr std::string_view kNone[] = {"NONE"};

/// A bound that the number itself may reach.
[[nodiscard]] constexpr Boundary atLeast(double value) {
    return {value, UPSpecTypes::BoundaryOption::inclusive};
}

/// A bound that the number itself must not reach.
[[nodiscard]] constexpr Boundary above(double value) {
    return {value, UPSpecTypes::BoundaryOption::exclusive};
}
[[nodiscard]] constexpr Boundary atMost(double value) { return atLeast(value); }

/// One qualifier of a parameter's value.
struct QualifierRow {
    std::string_view name;
    UPSpecTypes::ParamSpec spec;
    std::string_view valueLabel = {};
    std::optional<Boundary> lower = {};
    std::optional<Boundary> upper = {};
    bool checkedByCommand = false;
};

/// One parameter of a subcommand. The operations at the end give a changed copy.
struct ParameterRow {
    std::string_view name;
    UPSpecTypes::ParamSpec spec;
    bool required;
    bool valueRequired;
    std::span<const std::string_view> values = {};
    std::string_view valueLabel = {};  ///< what help texts call the value
    std::span<const QualifierRow> qualifiers = {};
    UPSpecTypes::BracketOptions brackets = UPSpecTypes::BracketOptions::none;
    bool checkedByCommand = false;
    UPSpecTypes::ReadValue readValue = UPSpecTypes::ReadValue::everything;
    std::optional<Boundary> lower = {};
    std::optional<Boundary> upper = {};

    [[nodiscard]] constexpr ParameterRow of(std::span<const std::string_view> stringValues) const {
        ParameterRow row = *this;
        row.values = stringValues;
        return row;
    }
    [[nodiscard]] constexpr ParameterRow qualifiedBy(std::span<const QualifierRow> rows) const {
        ParameterRow row = *this;
        row.qualifiers = rows;
        return row;
    }
    [[nodiscard]] constexpr ParameterRow bracketed(UPSpecTypes::BracketOptions option) const {
        ParameterRow row = *this;
        row.brackets = option;
        return row;
    }
    [[nodiscard]] constexpr ParameterRow boundedBy(Boundary lowest,
                                                   std::optional<Boundary> greatest = {}) const {
        ParameterRow row = *this;
        row.lower = lowest;
        row.upper = greatest;
        return row;
    }
    /// The command has a rule of its own for values that do not fit.
    [[nodiscard]] constexpr ParameterRow checked() const {
        ParameterRow row = *this;
        row.checkedByCommand = true;
        return row;
    }
    /// The command passes over any other value and reports nothing, so the parser warns.
    [[nodiscard]] constexpr ParameterRow readOnly(UPSpecTypes::ReadValue what) const {
        ParameterRow row = *this;
        row.readValue = what;
        return row;
    }
};

/// A parameter that may be left out; where it is given it takes a value.
[[nodiscard]] constexpr ParameterRow optionalParameter(std::string_view name, UPSpecTypes::ParamSpec spec,
                                                       std::string_view valueLabel = {}) {
    return {name, spec, false, true, {}, valueLabel};
}

/// One subcommand.
struct SubcommandRow {
    std::string_view name;
    UPSpecTypes::SubComSpec spec;
    bool required;
    bool repeatable;
    std::span<const ParameterRow> parameters = {};
    bool mayBeEmpty = false;  ///< it makes sense without any parameter
};

/// A whole command; the unnamed subcommand stands first.
using GrammarTable = std::span<const SubcommandRow>;

/// What a row says, for the parser. A parameter's name that stands in two rows is described twice: the later
/// row holds, in the place of the earlier.
[[nodiscard]] ParamDescriptor describe(const ParameterRow& row);
[[nodiscard]] SubComDescriptor describe(const SubcommandRow& row);

/// Adds the rows of `table` to `descriptor`, in their order.
void describe(CommandDescriptor& descriptor, GrammarTable table);

}  // namespace vexa
