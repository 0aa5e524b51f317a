// How much memory a piece of work takes at its peak. Each is measured in a fresh process of this same
// program, because memory that an earlier piece left behind would hide what the next one needs.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace vexa::bench {

using Arguments = std::vector<std::string>;

/// A piece of work that can be measured alone, and what must be there before it.
struct LoneWork {
    std::function<void(const Arguments&)> prepare;
    std::function<void(const Arguments&)> work;
};

/// Makes `work` measurable under `name`; to be called before `main`.
void registerLoneWork(const std::string& name, LoneWork work);

/// Runs the work `name` in a fresh process and gives the bytes that it needed at its peak above what was in
/// use before it; 0 when that could not be measured.
std::size_t peakMemoryOf(const std::string& name, const Arguments& arguments);

/// The same for another program, found on the path and run in `folder`, itself included.
std::size_t peakMemoryOfProgram(const Arguments& command, const std::string& folder);

/// What a fresh process does: measures what its arguments name and prints the bytes. False when they name
/// nothing.
bool runAlone(int argc, char** argv);

/// Runs a program in `folder` and gives the processor time that it took, in nanoseconds; below 0 when it
/// failed.
double timeOfProgram(const Arguments& command, const std::string& folder);

}  // namespace vexa::bench
