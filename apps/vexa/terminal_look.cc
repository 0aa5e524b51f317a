#include "apps/vexa/terminal_look.h"

#include <cstdlib>
#include <string_view>

#include "backend/platform/terminal.h"

namespace vexa::program {

namespace {

/// Terminals say themselves that they have all colours; those that say nothing have a palette by now.
rendering::ColorDepth colorDepth(bool styled) {
    if (!styled) {
        return rendering::ColorDepth::none;
    }
    const char* const said = std::getenv("COLORTERM");
    const std::string_view depth = said == nullptr ? "" : said;
    return depth == "truecolor" || depth == "24bit" ? rendering::ColorDepth::full
                                                    : rendering::ColorDepth::palette;
}

}  // namespace

TerminalLook terminalLook() {
    TerminalLook look;
    look.width = terminalColumns(StandardStream::output);
    look.styledResults = showsColors(StandardStream::output);
    look.resultColors = colorDepth(look.styledResults);
    look.colouredMessages = showsColors(StandardStream::error);
    return look;
}

}  // namespace vexa::program
