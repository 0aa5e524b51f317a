// PDF: pages that look the same everywhere.

#include "module/export/read_format.h"

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
    return readDocument<ExportPDFSpec>(kPdfGrammar, command, messages, pdf, path, kKeywords);
}

}  // namespace vexa
