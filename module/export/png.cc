// PNG: images without loss.

#include "module/export/format_values.h"
#include "module/export/formats.h"
#include "module/export/targets.h"

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
    const SubComObj* const given = command.getSubComObj("PNG");
    if (given == nullptr) {
        return false;
    }
    readImageRoot(*given, rootRequired, messages, png);
    const bool valid = readPercentSize(*given, messages, png);
    readKeywords<ExportPNGSpec>(*given, kKeywords, png);
    return finish(png, valid);
}

}  // namespace vexa
