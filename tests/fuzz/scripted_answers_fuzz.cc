// Any bytes as a file of scripted answers: read, or refused with a message that names file and line.

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "apps/vexa/scripted_answers.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    std::string message;
    const bool read = vexa::program::readScriptedAnswers(content, "a", message).has_value();
    if (read != message.empty() || (!read && !message.starts_with("a:"))) {
        std::abort();
    }
    return 0;
}
