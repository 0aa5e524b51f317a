// Whole files, for commands that pass them on.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vexa {

/// The pivot builder library's file fetcher.
class FetchFile {
  public:
    /// Files above this size, in bytes, count as files that cannot be read.
    static constexpr std::uint64_t kLimit = std::uint64_t{64} << 20;

    /// The content of the file `name` (back end's character set, either separator), byte for byte: nothing is
    /// converted. Empty when the file is empty or cannot be read; folders, devices and pipes are never read.
    /// `resolve`: a file handle that the name is or begins with is resolved first, and a relative name is
    /// taken from the back end's folder; without it, a relative name is taken from the process's folder.
    /// `quiet`: says nothing of a file that cannot be read; otherwise a warning names it.
    [[nodiscard]] static std::string fetch(std::string_view name, bool resolve, bool quiet);
};

}  // namespace vexa
