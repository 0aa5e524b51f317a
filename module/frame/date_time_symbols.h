// Date and time symbols in texts that users give: )DATE, )ADATE, )EDATE, )SDATE, )TIME, )ETIME.
#pragma once

#include <string>
#include <string_view>

namespace vexa {

/// `text` with its symbols replaced by the current local date and time; the month's name is in the language
/// of the user. Symbols are written in capitals; nothing else is replaced. Both texts are in the back end's
/// character set.
[[nodiscard]] std::string ExpandDateTimeSymbols(std::string_view text);

}  // namespace vexa
