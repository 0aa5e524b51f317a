// The module's own messages in the output log. Texts are in the back end's character set.
#pragma once

#include <string_view>
#include <vector>

#include "backend/pivot/bp_text.h"

namespace vexa {

/// Levels of messages that the module raises itself.
inline constexpr BpErrorLevel kWarningLevel = 2;
inline constexpr BpErrorLevel kErrorLevel = 3;

/// Reports `text`, translatable, with `argument`, not translatable, in the place of its marker ^1. An empty
/// argument gives the text alone.
void reportMessage(SystemText text, std::string_view argument, BpErrorLevel level);

/// The same for a text of the output controller's.
void reportAnswer(std::string_view text, std::string_view argument, BpErrorLevel level);

/// Reports `text` with `argument`, also an empty one, in the place of its marker ^1.
void reportWithArgument(SystemText text, std::string_view argument, BpErrorLevel level);

/// Reports `text` with arguments, not translatable, in the places of its markers; those of a text without
/// markers are shown as a list behind it.
void reportList(SystemText text, const std::vector<std::string_view>& arguments, BpErrorLevel level);

/// Reports that the back end has no front end that could carry the command out.
void reportNotImplemented(std::string_view command);

/// Reports `text` alone.
void reportPlain(SystemText text, BpErrorLevel level);

}  // namespace vexa
