// PNG: images that keep every detail, in a chosen depth of color.

#include "module/export/read_format.h"

namespace vexa {

namespace {

constexpr Choice kDepths[] = {{"SCREEN", 0},    {"BLACKWHITE", 1}, {"GRAYS256", 2}, {"COLORS16", 3},
                              {"COLORS256", 4}, {"TRUE24BIT", 5},  {"TRUE32BIT", 6}};
constexpr auto kDepthWords = wordsOf(kDepths);

constexpr ParameterRow kParameters[] = {
    kImageRoot, kPercentSize, optionalParameter("DEPTH", UPSpecTypes::ParamSpec::word).of(kDepthWords)};

constexpr KeywordOption<ExportPNGSpec> kKeywords[] = {
    {"DEPTH", kDepths, setNumber<ExportPNGSpec, &ExportPNGSpec::setDepth>},
};

}  // namespace

constexpr SubcommandRow kPngGrammar{"PNG", UPSpecTypes::SubComSpec::keywordParameters, false, false,
                                    kParameters};

bool readPng(const CommandSpec& command, ParserMessage& messages, ExportPNGSpec& png, bool rootRequired) {
    return readSizedImages<ExportPNGSpec>(kPngGrammar, command, messages, png, rootRequired, kKeywords);
}

}  // namespace vexa
