// The free tokens of OUTPUT ACTIVATE and OUTPUT NAME: a name, given by position or by keyword, and MINIMIZED.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "backend/adapter/output_controller_messages.h"
#include "backend/syntax/command_spec.h"
#include "backend/syntax/parser_message.h"
#include "module/frame/grammar.h"

namespace vexa {

/// What help and completion show; the command reads its tokens itself.
inline constexpr ParameterRow kPositionalNameParameters[] = {
    {"NAME", UPSpecTypes::ParamSpec::tokens, false, true, {}, "name"},
    {"MINIMIZED", UPSpecTypes::ParamSpec::word, false, true, kYesNo},
};

inline constexpr SubcommandRow kPositionalNameGrammar[] = {
    {"", UPSpecTypes::SubComSpec::freeTokens, true, false, kPositionalNameParameters},
};

struct PositionalName {
    std::string name;
    OutputDocumentMinimized minimized = OutputDocumentMinimized::no;
};

/// What such a command takes, for messages.
inline constexpr ExpectedValue kOneName{
    "one name, as in NAME=report, and perhaps MINIMIZED=YES or MINIMIZED=NO"_text};

/// What a positional token that is itself "=" means.
enum class LoneEquals { isName, isSkipped };

/// Reads the tokens, or nothing when they do not fit: a keyword without "=" and value, or a second name by
/// position. Without tokens the name is empty. A value of MINIMIZED that is neither YES nor NO counts as NO,
/// with a warning.
[[nodiscard]] std::optional<PositionalName> readPositionalName(const ParamObj& tokens, LoneEquals loneEquals,
                                                               ParserMessage& messages);

}  // namespace vexa
