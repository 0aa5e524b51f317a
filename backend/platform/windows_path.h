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
/// True for a whole path that the system made of the name of a device ("\\.\CON"), which need not be there.
[[nodiscard]] bool namesDevice(std::wstring_view whole);
/// True for a whole path with a colon behind its drive's: it names a part of a file that no list of files
/// shows.
[[nodiscard]] bool namesStream(std::wstring_view whole);

}  // namespace vexa
