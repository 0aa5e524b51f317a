// What is wrong with a syntax file as a text, and with commands that were typed by a word processor.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "backend/session/command_catalog.h"
#include "backend/tokens/command_text.h"

namespace vexa {

/// True for a text that is UTF-16, which no syntax file is: it begins with its mark, or has the zero bytes of
/// letters in it.
[[nodiscard]] bool looksLikeUtf16(std::string_view text);

/// The number (from 1) of the first line that is no text of the current character set; 0 when all are.
[[nodiscard]] int firstBrokenLine(std::string_view text);

/// Something outside of quotes and comments that the language does not know, though it looks like what it
/// knows.
struct StrangeMark {
    enum class Kind { blank, quote };
    Kind kind = Kind::blank;
    std::string mark;  ///< a blank's code, such as U+00A0; a quote itself, UTF-8
    int line = 0;      ///< of the file
};
[[nodiscard]] std::optional<StrangeMark> findStrangeMark(const CommandText& command);

/// The command that begins behind a period within a line of `command`, outside of quotes and comments. Names
/// of one word, which may be something else, count where `oneWord` is true.
[[nodiscard]] const KnownCommand* commandBehindPeriod(const CommandText& command, bool oneWord);

}  // namespace vexa
