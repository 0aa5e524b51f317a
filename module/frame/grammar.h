// The grammar of a command as a table: what its syntax table says, row by row.
#pragma once

#include <span>
#include <string_view>

#include "backend/syntax/descriptors.h"

namespace vexa {

/// Keyword values that many parameters share.
inline constexpr std::string_view kYesNo[] = {"YES", "NO"};
inline constexpr std::string_view kNone[] = {"NONE"};

/// One parameter of a subcommand, with no brackets round its value.
struct ParameterRow {
    std::string_view name;
    UPSpecTypes::ParamSpec spec;
    bool required;
    bool valueRequired;
    std::span<const std::string_view> values = {};
    std::string_view valueLabel = {};  ///< what help texts call the value
};

/// One subcommand.
struct SubcommandRow {
    std::string_view name;
    UPSpecTypes::SubComSpec spec;
    bool required;
    bool repeatable;
    std::span<const ParameterRow> parameters = {};
};

/// A whole command; the unnamed subcommand stands first.
using GrammarTable = std::span<const SubcommandRow>;

/// Adds the rows of `table` to `descriptor`, in their order.
void describe(CommandDescriptor& descriptor, GrammarTable table);

}  // namespace vexa
