// BMP, EMF, JPG, PNG and TIF: images whose size is a percentage.

#include "module/export/read_format.h"

namespace vexa {

namespace {

constexpr auto kKeywordParameters = UPSpecTypes::SubComSpec::keywordParameters;

constexpr Choice kDepths[] = {{"SCREEN", 0},    {"BLACKWHITE", 1}, {"GRAYS256", 2}, {"COLORS16", 3},
                              {"COLORS256", 4}, {"TRUE24BIT", 5},  {"TRUE32BIT", 6}};
constexpr auto kDepthWords = wordsOf(kDepths);

constexpr ParameterRow kBmpParameters[] = {kImageRoot, kPercentSize, yesOrNo("COMPRESS")};
constexpr ParameterRow kEmfParameters[] = {kImageRoot, kPercentSize};
constexpr ParameterRow kJpgParameters[] = {kImageRoot, kPercentSize, yesOrNo("GRAYSCALE")};
constexpr ParameterRow kPngParameters[] = {
    kImageRoot, kPercentSize, optionalParameter("DEPTH", UPSpecTypes::ParamSpec::word).of(kDepthWords)};
constexpr ParameterRow kTifParameters[] = {kImageRoot, kPercentSize};

constexpr KeywordOption<ExportBMPSpec> kBmpKeywords[] = {
    {"COMPRESS", kYesNoChoices, setNumber<ExportBMPSpec, &ExportBMPSpec::setCompress>},
};
constexpr KeywordOption<ExportJPGSpec> kJpgKeywords[] = {
    {"GRAYSCALE", kYesNoChoices, setNumber<ExportJPGSpec, &ExportJPGSpec::setGrayscale>},
};
constexpr KeywordOption<ExportPNGSpec> kPngKeywords[] = {
    {"DEPTH", kDepths, setNumber<ExportPNGSpec, &ExportPNGSpec::setDepth>},
};

}  // namespace

constexpr SubcommandRow kBmpGrammar{"BMP", kKeywordParameters, false, false, kBmpParameters};
constexpr SubcommandRow kEmfGrammar{"EMF", kKeywordParameters, false, false, kEmfParameters};
constexpr SubcommandRow kJpgGrammar{"JPG", kKeywordParameters, false, false, kJpgParameters};
constexpr SubcommandRow kPngGrammar{"PNG", kKeywordParameters, false, false, kPngParameters};
constexpr SubcommandRow kTifGrammar{"TIF", kKeywordParameters, false, false, kTifParameters};

bool readBmp(const CommandSpec& command, ParserMessage& messages, ExportBMPSpec& bmp, bool rootRequired) {
    return readSizedImages<ExportBMPSpec>(kBmpGrammar, command, messages, bmp, rootRequired, kBmpKeywords);
}

bool readEmf(const CommandSpec& command, ParserMessage& messages, ExportEMFSpec& emf, bool rootRequired) {
    return readSizedImages<ExportEMFSpec>(kEmfGrammar, command, messages, emf, rootRequired);
}

bool readJpg(const CommandSpec& command, ParserMessage& messages, ExportJPGSpec& jpg, bool rootRequired) {
    return readSizedImages<ExportJPGSpec>(kJpgGrammar, command, messages, jpg, rootRequired, kJpgKeywords);
}

bool readPng(const CommandSpec& command, ParserMessage& messages, ExportPNGSpec& png, bool rootRequired) {
    return readSizedImages<ExportPNGSpec>(kPngGrammar, command, messages, png, rootRequired, kPngKeywords);
}

bool readTif(const CommandSpec& command, ParserMessage& messages, ExportTIFSpec& tif, bool rootRequired) {
    return readSizedImages<ExportTIFSpec>(kTifGrammar, command, messages, tif, rootRequired);
}

}  // namespace vexa
