// DOC: a word processor's document.

#include "module/export/format_values.h"
#include "module/export/formats.h"
#include "module/export/targets.h"

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

}  // namespace

constexpr SubcommandRow kDocGrammar{"DOC", UPSpecTypes::SubComSpec::keywordParameters, false, false,
                                    kParameters};

bool readDoc(const CommandSpec& command, ParserMessage& messages, ExportDocSpec& doc, std::string& path) {
    const SubComObj* const given = command.getSubComObj("DOC");
    if (given == nullptr) {
        return false;
    }
    bool valid = readFileInto(path, *given, messages, doc);
    readKeywords<ExportDocSpec>(*given, kKeywords, doc);
    valid = readPageSize(*given, messages, doc) && valid;
    valid = readMargins(*given, messages, doc) && valid;
    return finish(doc, valid);
}

}  // namespace vexa
