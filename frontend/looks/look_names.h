// Names of what the folders `Looks` hold.
#pragma once

#include <string>
#include <string_view>

namespace vexa::frontend {

/// Whether a name is no path: it stays in its folder.
[[nodiscard]] inline bool isPlainLookName(std::string_view name) {
    return !name.empty() && name.find_first_of("/\\:") == std::string_view::npos && name.front() != '.' &&
           name.find('\0') == std::string_view::npos;
}

/// A name with small letters in the place of A to Z.
[[nodiscard]] inline std::string smallLookName(std::string_view name) {
    std::string small(name);
    for (char& each : small) {
        if (each >= 'A' && each <= 'Z') each = static_cast<char>(each - 'A' + 'a');
    }
    return small;
}

/// The path of a file in a folder that is written with a separator at its end or without.
[[nodiscard]] inline std::string inLookFolder(const std::string& folder, std::string_view file) {
    const bool isDivided = folder.ends_with('/') || folder.ends_with('\\');
    return std::string(folder).append(isDivided ? "" : "/").append(file);
}

}  // namespace vexa::frontend
