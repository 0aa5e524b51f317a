// Takes values apart that are made of qualifiers. Internal to this folder.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "backend/syntax/command_spec.h"
#include "backend/syntax/descriptors.h"
#include "backend/tokens/token.h"

namespace vexa {

/// Appends the qualifiers of `value`, which has the form `spec` (26, 27 or 28; any other is read as 27), to
/// `qualifiers`. Nothing on success; else the index of the first token that does not fit: an opening
/// parenthesis when it is not closed, the size of `value` when something is missing at its end.
[[nodiscard]] std::optional<std::size_t> readQualifiers(UPSpecTypes::ParamSpec spec,
                                                        std::span<const TokenInfoObj> value,
                                                        std::vector<QualifierObj>& qualifiers);

}  // namespace vexa
