// EMF: enhanced metafiles.

#include "module/export/format_values.h"
#include "module/export/formats.h"
#include "module/export/targets.h"

namespace vexa {

namespace {

constexpr ParameterRow kParameters[] = {kImageRoot, kPercentSize};

}  // namespace

constexpr SubcommandRow kEmfGrammar{"EMF", UPSpecTypes::SubComSpec::keywordParameters, false, false,
                                    kParameters};

bool readEmf(const CommandSpec& command, ParserMessage& messages, ExportEMFSpec& emf, bool rootRequired) {
    const SubComObj* const given = command.getSubComObj("EMF");
    if (given == nullptr) {
        return false;
    }
    readImageRoot(*given, rootRequired, messages, emf);
    return finish(emf, readPercentSize(*given, messages, emf));
}

}  // namespace vexa
