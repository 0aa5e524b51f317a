#include "backend/platform/standard_output.h"

#include <iostream>

namespace vexa {

void writeStandardOutput(std::string_view bytes) {
    std::cout.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    std::cout.flush();
}

}  // namespace vexa
