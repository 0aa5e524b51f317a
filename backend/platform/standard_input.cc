#include "backend/platform/standard_input.h"

#include <array>
#include <cerrno>
#include <iostream>

#include "backend/platform/system_reason.h"

namespace vexa {

FileResult readStandardInput(std::string& content) {
    std::array<char, 65536> block{};
    errno = 0;
    do {
        std::cin.read(block.data(), block.size());
        content.append(block.data(), static_cast<std::size_t>(std::cin.gcount()));
    } while (std::cin);
    return std::cin.bad() ? FileResult{false, systemReason(errno != 0 ? errno : EIO)} : FileResult();
}

}  // namespace vexa
