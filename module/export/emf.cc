// EMF: images of lines and text that scale.

#include "module/export/read_format.h"

namespace vexa {

namespace {

constexpr ParameterRow kParameters[] = {kImageRoot, kPercentSize};

}  // namespace

constexpr SubcommandRow kEmfGrammar{"EMF", UPSpecTypes::SubComSpec::keywordParameters, false, false,
                                    kParameters};

bool readEmf(const CommandSpec& command, ParserMessage& messages, ExportEMFSpec& emf, bool rootRequired) {
    return readSizedImages<ExportEMFSpec>(kEmfGrammar, command, messages, emf, rootRequired);
}

}  // namespace vexa
