// PDF: pages that look the same everywhere.

#include "module/export/format_values.h"
#include "module/export/formats.h"
#include "module/export/targets.h"

namespace vexa {

namespace {

constexpr ParameterRow kParameters[] = {kDocumentFile, yesOrNo("EMBEDBOOKMARKS"), yesOrNo("EMBEDFONTS")};

constexpr KeywordOption<ExportPDFSpec> kKeywords[] = {
    {"EMBEDBOOKMARKS", kYesNoChoices, setNumber<ExportPDFSpec, &ExportPDFSpec::setEmbedBookmarks>},
    {"EMBEDFONTS", kYesNoChoices, setNumber<ExportPDFSpec, &ExportPDFSpec::setEmbedFonts>},
};

}  // namespace

constexpr SubcommandRow kPdfGrammar{"PDF", UPSpecTypes::SubComSpec::keywordParameters, false, false,
                                    kParameters};

bool readPdf(const CommandSpec& command, ParserMessage& messages, ExportPDFSpec& pdf, std::string& path) {
    const SubComObj* const given = command.getSubComObj("PDF");
    if (given == nullptr) {
        return false;
    }
    const bool valid = readFileInto(path, *given, messages, pdf);
    readKeywords<ExportPDFSpec>(*given, kKeywords, pdf);
    return finish(pdf, valid);
}

}  // namespace vexa
