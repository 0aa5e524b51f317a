// JPG: photographs.

#include "module/export/format_values.h"
#include "module/export/formats.h"
#include "module/export/targets.h"

namespace vexa {

namespace {

constexpr ParameterRow kParameters[] = {kImageRoot, kPercentSize, yesOrNo("GRAYSCALE")};

constexpr KeywordOption<ExportJPGSpec> kKeywords[] = {
    {"GRAYSCALE", kYesNoChoices, setNumber<ExportJPGSpec, &ExportJPGSpec::setGrayscale>},
};

}  // namespace

constexpr SubcommandRow kJpgGrammar{"JPG", UPSpecTypes::SubComSpec::keywordParameters, false, false,
                                    kParameters};

bool readJpg(const CommandSpec& command, ParserMessage& messages, ExportJPGSpec& jpg, bool rootRequired) {
    const SubComObj* const given = command.getSubComObj("JPG");
    if (given == nullptr) {
        return false;
    }
    readImageRoot(*given, rootRequired, messages, jpg);
    const bool valid = readPercentSize(*given, messages, jpg);
    readKeywords<ExportJPGSpec>(*given, kKeywords, jpg);
    return finish(jpg, valid);
}

}  // namespace vexa
