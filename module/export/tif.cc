// TIF: images for print shops.

#include "module/export/read_format.h"

namespace vexa {

namespace {

constexpr ParameterRow kParameters[] = {kImageRoot, kPercentSize};

}  // namespace

constexpr SubcommandRow kTifGrammar{"TIF", UPSpecTypes::SubComSpec::keywordParameters, false, false,
                                    kParameters};

bool readTif(const CommandSpec& command, ParserMessage& messages, ExportTIFSpec& tif, bool rootRequired) {
    return readSizedImages<ExportTIFSpec>(kTifGrammar, command, messages, tif, rootRequired);
}

}  // namespace vexa
