// How much memory a piece of work takes at its peak.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace vexa::bench {

/// Runs `prepare` and then `work` in a process of their own and gives the bytes that `work` needed at its
/// peak above what was in use before it; 0 when that could not be measured.
std::size_t peakMemoryOf(const std::function<void()>& prepare, const std::function<void()>& work);

/// What a run of another program took.
struct ProgramCost {
    bool ok = false;
    double nanoseconds = 0;      ///< of a processor
    std::size_t peakMemory = 0;  ///< bytes, the program itself included
};

/// Runs a program, found on the path, in `folder`.
ProgramCost runProgram(const std::vector<std::string>& command, const std::string& folder);

}  // namespace vexa::bench
