// JPG: images that give up detail for size; in shades of gray on demand.

#include "module/export/read_format.h"

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
    return readSizedImages<ExportJPGSpec>(kJpgGrammar, command, messages, jpg, rootRequired, kKeywords);
}

}  // namespace vexa
