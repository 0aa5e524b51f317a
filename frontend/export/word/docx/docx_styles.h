// The part of a WordprocessingML document that holds its styles.
#pragma once

#include <cstdint>
#include <string>

#include "frontend/export/word/text_styles.h"

namespace vexa::frontend {

/// The styles of every role, and those of the tables' texts. `language` is a language tag, `textWidth`
/// what is between the margins, twips.
[[nodiscard]] std::string docxStyles(const TextStyles& styles, const std::string& language,
                                     std::int64_t textWidth);

}  // namespace vexa::frontend
