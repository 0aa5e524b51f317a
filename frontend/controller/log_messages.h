// What the embedded front end itself says in the output log, beside the answers to requests.
#pragma once

#include <initializer_list>
#include <string>

#include "backend/pivot/bp_text.h"
#include "backend/text/system_text.h"

namespace vexa::frontend {

inline constexpr BpErrorLevel noteLevel = 1;
inline constexpr BpErrorLevel warningLevel = 2;
inline constexpr BpErrorLevel errorLevel = 3;

/// A text from the user, UTF-8, for the log.
[[nodiscard]] BpString userText(const std::string& text);
/// A text of the system for the log.
[[nodiscard]] BpString systemText(SystemText text);

/// Puts a message into the log; its arguments replace ^1, ^2, ...
void say(BpErrorLevel level, SystemText message, std::initializer_list<BpString> arguments = {});

}  // namespace vexa::frontend
