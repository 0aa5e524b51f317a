// The part of a WordprocessingML document that holds its styles.
#pragma once

#include <string>

#include "frontend/export/word/text_styles.h"

namespace vexa::frontend {

/// The styles of every role, and those of the tables' texts. `language` is a language tag.
[[nodiscard]] std::string docxStyles(const TextStyles& styles, const std::string& language);

}  // namespace vexa::frontend
