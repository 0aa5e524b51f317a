// DOC: a word processor's document.

#include "module/export/read_format.h"

namespace vexa {

namespace {

constexpr ParameterRow kParameters[] = {
    kDocumentFile,           kNotesCaptions,           kWideTablesRow,
    sizeRow("PAGESIZE"),     marginRow("TOPMARGIN"),   marginRow("BOTTOMMARGIN"),
    marginRow("LEFTMARGIN"), marginRow("RIGHTMARGIN"), yesOrNo("PAGEBREAKS"),
};

constexpr KeywordOption<ExportDocSpec> kKeywords[] = {
    {"NOTESCAPTIONS", kYesNoChoices, setNumber<ExportDocSpec, &ExportDocSpec::setNotesAndCaptions>},
    {"WIDETABLES", kWideTables, setNumber<ExportDocSpec, &ExportDocSpec::setWideTables>},
    {"PAGEBREAKS", kYesNoChoices, setNumber<ExportDocSpec, &ExportDocSpec::setPageBreaks>},
};

bool readPageSize(const SubComObj& given, ParserMessage& messages, ExportDocSpec& doc) {
    const SizeValue size = readSize(given, "PAGESIZE", messages);
    if (size.width && size.height) {
        doc.setPageSizeWidth(size.unit, size.width->number, size.width->text);
        doc.setPageSizeHeight(size.unit, size.height->number, size.height->text);
    }
    return size.valid;
}

bool readPageAndMargins(const SubComObj& given, ParserMessage& messages, ExportDocSpec& doc) {
    const bool valid = readPageSize(given, messages, doc);
    return readMargins(given, messages, doc) && valid;
}

}  // namespace

constexpr SubcommandRow kDocGrammar{"DOC", UPSpecTypes::SubComSpec::keywordParameters, false, false,
                                    kParameters};

bool readDoc(const CommandSpec& command, ParserMessage& messages, ExportDocSpec& doc, std::string& path) {
    return readDocument<ExportDocSpec>(kDocGrammar, command, messages, doc, path, kKeywords,
                                       readPageAndMargins);
}

}  // namespace vexa
