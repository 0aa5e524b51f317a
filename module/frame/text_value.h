// Values that are texts.
#pragma once

#include <optional>
#include <string_view>

#include "backend/syntax/command_spec.h"

namespace vexa {

/// A value that is one quoted text or one word, ALL among them.
struct TextValue {
    std::string_view text;  ///< lives as long as the command's tokens
    bool isLiteral = false;
};

/// Nothing when the value is anything else.
[[nodiscard]] std::optional<TextValue> textValue(const ParamObj& parameter);

}  // namespace vexa
