// Texts that several of the parser's refusals share. For the parser library's own files.
#pragma once

#include <initializer_list>
#include <string>

#include "backend/strings/dictionary.h"
#include "backend/text/system_text.h"

namespace vexa {

namespace texts {

inline constexpr SystemText kFound = "Found ^1."_text;
inline constexpr SystemText kDidYouMean = "Did you mean ^1?"_text;
inline constexpr SystemText kNeedsValue = "^1 needs a value: ^2."_text;
/// The second argument is the sign that is missing.
inline constexpr SystemText kListNotClosed = "The list of ^1 is not closed: \"^2\" is missing."_text;

}  // namespace texts

/// One message of several sentences; empty ones do not count.
[[nodiscard]] inline std::string sentences(std::initializer_list<std::string> parts) {
    std::string message;
    for (const std::string& part : parts) {
        appendSentence(message, part);
    }
    return message;
}

}  // namespace vexa
