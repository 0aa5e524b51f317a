// What the program ends with.
#pragma once

namespace vexa::program::exit_status {

inline constexpr int kSuccess = 0;       ///< every command ran without an error
inline constexpr int kCommandError = 1;  ///< a command reported an error
inline constexpr int kUsage = 2;         ///< wrong usage, or a file that cannot be read or written

}  // namespace vexa::program::exit_status
