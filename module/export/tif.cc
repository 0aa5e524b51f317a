// TIF: tagged images.

#include "module/export/format_values.h"
#include "module/export/formats.h"
#include "module/export/targets.h"

namespace vexa {

namespace {

constexpr ParameterRow kParameters[] = {kImageRoot, kPercentSize};

}  // namespace

constexpr SubcommandRow kTifGrammar{"TIF", UPSpecTypes::SubComSpec::keywordParameters, false, false,
                                    kParameters};

bool readTif(const CommandSpec& command, ParserMessage& messages, ExportTIFSpec& tif, bool rootRequired) {
    const SubComObj* const given = command.getSubComObj("TIF");
    if (given == nullptr) {
        return false;
    }
    readImageRoot(*given, rootRequired, messages, tif);
    return finish(tif, readPercentSize(*given, messages, tif));
}

}  // namespace vexa
