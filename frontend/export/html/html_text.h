// Text as HTML holds it.
#pragma once

#include <string>
#include <string_view>

namespace vexa::frontend {

/// Appends a text as content or as the value of an attribute in double quotes. Control characters that HTML
/// cannot hold, and bytes that belong to no character, become U+FFFD; every line end is a line feed.
void appendHtml(std::string& html, std::string_view text);

/// The same with line ends as `<br>`.
void appendHtmlLines(std::string& html, std::string_view text);

}  // namespace vexa::frontend
