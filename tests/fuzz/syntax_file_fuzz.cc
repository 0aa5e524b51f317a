// Any bytes as a syntax file: every command is cut out once, in order, and its places stand inside it.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "backend/session/command_catalog.h"
#include "backend/session/command_cutter.h"
#include "backend/tokens/command_text.h"

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void readCommand(const vexa::CommandText& command) {
    require(command.arguments < command.text.size());
    const auto found = vexa::findCommandName(command.text, command.arguments);
    if (found) {
        require(found->end > command.arguments && found->end <= command.text.size());
    } else {
        require(!vexa::unknownCommandName(command.text, command.arguments).empty());
    }
    require(vexa::placeOf(command, command.arguments).line >= command.line);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text = vexa::withPlainLineEnds(std::string(reinterpret_cast<const char*>(data), size));
    require(text.find('\r') == std::string::npos);
    vexa::CommandCutter cutter(text, "a.vxs");
    vexa::CommandText command;
    int line = 0;
    std::size_t bytes = 0;
    while (cutter.next(command)) {
        require(command.line > line);
        line = command.line;
        bytes += command.text.size();
        readCommand(command);
    }
    require(bytes <= text.size());
    return 0;
}
