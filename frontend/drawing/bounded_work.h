// Work on what comes from outside, in a process of its own: it may take too long, need all memory or end in a
// crash, and the program goes on.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace vexa::frontend {

struct WorkLimits {
    unsigned int seconds = 20;
    std::uint64_t memory = std::uint64_t{2} << 30;       ///< bytes, beside what the program has
    std::uint64_t resultBytes = std::uint64_t{1} << 30;  ///< longest result
};

enum class WorkEnd {
    done,
    tooLong,    ///< the limit of time
    crashed,    ///< ended without a result, for example for want of memory
    noProcess,  ///< the system gave none; nothing was done
};

/// Calls `work` in a copy of the process, and gives what it returned. Nothing else that it does reaches this
/// process; it must not wait for another thread, of which the copy has none.
[[nodiscard]] WorkEnd workApart(const std::function<std::string()>& work, const WorkLimits& limits,
                                std::string& result);

}  // namespace vexa::frontend
