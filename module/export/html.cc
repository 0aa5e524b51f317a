// HTML: a web page, with images beside it.

#include "module/export/read_format.h"

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
    return readDocument<ExportHTMLSpec>(kHtmlGrammar, command, messages, html, path, kKeywords);
}

}  // namespace vexa
