// HTML: a web page, with images beside it.

#include "module/export/format_values.h"
#include "module/export/formats.h"
#include "module/export/targets.h"

namespace vexa {

namespace {

constexpr ParameterRow kParameters[] = {
    kDocumentFile, kNotesCaptions, yesOrNo("STYLING"), yesOrNo("INTERACTLAYERS"), kImageFormatRow,
};

constexpr KeywordOption<ExportHTMLSpec> kKeywords[] = {
    {"NOTESCAPTIONS", kYesNoChoices, setNumber<ExportHTMLSpec, &ExportHTMLSpec::setNotesAndCaptions>},
    {"STYLING", kYesNoChoices, setNumber<ExportHTMLSpec, &ExportHTMLSpec::setStyling>},
    {"INTERACTLAYERS", kYesNoChoices, setNumber<ExportHTMLSpec, &ExportHTMLSpec::setInteractiveLayers>},
    {"IMAGEFORMAT", kImageFormats, setNumber<ExportHTMLSpec, &ExportHTMLSpec::setImageFormat>},
};

}  // namespace

constexpr SubcommandRow kHtmlGrammar{"HTML", UPSpecTypes::SubComSpec::keywordParameters, false, false,
                                     kParameters};

bool readHtml(const CommandSpec& command, ParserMessage& messages, ExportHTMLSpec& html, std::string& path) {
    const SubComObj* const given = command.getSubComObj("HTML");
    if (given == nullptr) {
        return false;
    }
    const bool valid = readFileInto(path, *given, messages, html);
    readKeywords<ExportHTMLSpec>(*given, kKeywords, html);
    return finish(html, valid);
}

}  // namespace vexa
