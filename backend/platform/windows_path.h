// Paths as Windows takes them. For the platform library's own files on that system.
#pragma once

#include <string>
#include <string_view>

namespace vexa {

/// A path (UTF-8, either separator) for the system's functions. One that is too long for them in its usual
/// form, completed by the working folder, is made whole and gets the prefix under which they take 32767
/// characters.
[[nodiscard]] std::wstring systemPath(std::string_view path);
/// The same for a path in the system's own form.
[[nodiscard]] std::wstring systemPath(const std::wstring& path);
/// A path that the system gave, as UTF-8 without such a prefix; with it where nothing else names the place.
[[nodiscard]] std::string pathOfSystem(std::wstring_view path);
/// `path` from its drive or share on, as the system completes it, without "." and ".."; nothing is looked up.
/// Empty when the system cannot tell.
[[nodiscard]] std::wstring wholeSystemPath(const std::wstring& path);
/// Characters of a whole path that name its drive or its share, prefix and all: "C:" or "\\server\\share".
[[nodiscard]] std::size_t lengthOfRoot(std::wstring_view whole);

}  // namespace vexa
