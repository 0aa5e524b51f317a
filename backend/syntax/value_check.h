// Checks one value against its description. Internal to this folder.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

#include "backend/syntax/descriptors.h"
#include "backend/tokens/token_sequence.h"

namespace vexa {

/// Why a value was refused, and at which byte of the command; nothing for the value as a whole.
struct ValueError {
    std::string message;  ///< UTF-8
    std::optional<std::size_t> offset;
};

/// The first thing in `value` that `parameter` does not take, or nothing. `command` is where the tokens come
/// from.
[[nodiscard]] std::optional<ValueError> checkValue(const ParamDescriptor& parameter,
                                                   std::span<const TokenInfoObj> value,
                                                   const CommandText& command);

/// What the user should know of a value that its command passes over: that it is empty, or not of the kind
/// that the command reads. Nothing for a value that is read.
[[nodiscard]] std::optional<ValueError> checkRead(const ParamDescriptor& parameter,
                                                  std::span<const TokenInfoObj> value,
                                                  const CommandText& command);

/// What a parameter takes, in words: "a whole number", "YES or NO".
[[nodiscard]] std::string describeValue(const ParamDescriptor& parameter);

/// The sentences "NAME takes ...", "Only one can be given; ..." and "Did you mean ...?", the last one empty
/// where no candidate is near enough; all UTF-8, in the language of the user.
[[nodiscard]] std::string whatItTakes(const ParamDescriptor& parameter);
[[nodiscard]] std::string onlyOne(const TokenInfoObj& second, const CommandText& command);
[[nodiscard]] std::string didYouMean(const TokenInfoObj& token, std::span<const std::string_view> candidates);

/// A token as the user typed it, in double quotes, shortened when it is long; UTF-8.
[[nodiscard]] std::string asTyped(const TokenInfoObj& token, const CommandText& command);

}  // namespace vexa
