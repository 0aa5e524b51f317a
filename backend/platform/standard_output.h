// The process's standard output, for commands that print text of their own.
#pragma once

#include <string_view>

namespace vexa {

/// Writes the bytes as they are to `std::cout`, so that they stand in order with what the program prints, and
/// hands them to the system. A failure is not reported: the stream remembers it, and the program looks at it
/// when it ends.
void writeStandardOutput(std::string_view bytes);

}  // namespace vexa
