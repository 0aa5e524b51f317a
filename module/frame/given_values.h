// Values that several commands read: texts, and the files that users name.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "backend/syntax/command_spec.h"
#include "backend/syntax/parser_message.h"

namespace vexa {

/// A value that is one quoted text or one word, ALL among them.
struct TextValue {
    std::string_view text;  ///< lives as long as the command's tokens
    bool isLiteral = false;
};

/// Nothing when the value is anything else.
[[nodiscard]] std::optional<TextValue> textValue(const ParamObj& parameter);

/// The whole path that the value of the file parameter `keyword` means, written with backslashes: handles
/// resolved, a relative name expanded where front end and back end do not see the same files. Empty when the
/// value is not one text, which has then been reported.
[[nodiscard]] std::string readFileSpecification(const ParamObj& file, std::string_view keyword,
                                                ParserMessage& messages);

/// Expands a relative specification and turns slashes into backslashes.
[[nodiscard]] std::string normaliseFileSpec(std::string file);

}  // namespace vexa
