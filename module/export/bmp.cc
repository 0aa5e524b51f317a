// BMP: bitmaps, compressed or not.

#include "module/export/read_format.h"

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
    return readSizedImages<ExportBMPSpec>(kBmpGrammar, command, messages, bmp, rootRequired, kKeywords);
}

}  // namespace vexa
