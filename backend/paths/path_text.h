// The text of a path, in the back end's character set. For the path library's own files.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vexa {

/// Bytes before the first separator (backslash or slash) of `path`, all of them when there is none. A trail
/// byte of a character is no separator.
[[nodiscard]] std::size_t segmentLength(std::string_view path);
/// True when the path begins with a separator or its second character is a colon.
[[nodiscard]] bool isWholePath(std::string_view path);
/// The path with backslashes, single ones but for two at the beginning, without `.` and with `..` taken off
/// together with the name before it, as the text stands: nothing is looked up. A separator at the end stays.
[[nodiscard]] std::string resolvedPath(std::string_view path);
/// `folder`, one separator, `rest`.
[[nodiscard]] std::string joinedPath(std::string_view folder, std::string_view rest);

}  // namespace vexa
