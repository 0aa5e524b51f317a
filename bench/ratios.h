// What a benchmark measured, kept until the end of the run, so that our time can be printed beside a peer's
// of the same run. An absolute time depends on the machine; the ratio of two times in one run says more.
#pragma once

#include <string>

namespace vexa::bench {

/// Remembers that the benchmark `name` took `nanoseconds` for one unit of its work.
void remember(const std::string& name, double nanoseconds);

/// Asks for a line "LABEL: OURS of PEER = ratio" at the end of the run, when both were remembered.
void compareAtEnd(const std::string& label, const std::string& ours, const std::string& peer);

/// Prints the lines.
void printComparisons();

}  // namespace vexa::bench
