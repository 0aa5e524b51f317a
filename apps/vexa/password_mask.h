// Passwords in the trace, where others might see them.
#pragma once

#include <nlohmann/json.hpp>
#include <string_view>

namespace vexa::program {

/// Puts *** in the place of the passwords of `line`: of the value of a key `password` that is not empty, and
/// of what the text of a command (UTF-8) gives for PASSWORD in quotes, wherever it stands in a text.
void maskPasswords(nlohmann::ordered_json& line, std::string_view command);

}  // namespace vexa::program
