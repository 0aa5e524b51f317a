// BMP: bitmaps.

#include "module/export/format_values.h"
#include "module/export/formats.h"
#include "module/export/targets.h"

namespace vexa {

namespace {

constexpr ParameterRow kParameters[] = {kImageRoot, kPercentSize, yesOrNo("COMPRESS")};

constexpr KeywordOption<ExportBMPSpec> kKeywords[] = {
    {"COMPRESS", kYesNoChoices, setNumber<ExportBMPSpec, &ExportBMPSpec::setCompress>},
};

}  // namespace

constexpr SubcommandRow kBmpGrammar{"BMP", UPSpecTypes::SubComSpec::keywordParameters, false, false,
                                    kParameters};

bool readBmp(const CommandSpec& command, ParserMessage& messages, ExportBMPSpec& bmp, bool rootRequired) {
    const SubComObj* const given = command.getSubComObj("BMP");
    if (given == nullptr) {
        return false;
    }
    readImageRoot(*given, rootRequired, messages, bmp);
    readKeywords<ExportBMPSpec>(*given, kKeywords, bmp);
    return finish(bmp, readPercentSize(*given, messages, bmp));
}

}  // namespace vexa
