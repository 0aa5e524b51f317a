// PPT: a presentation.

#include "module/export/read_format.h"

namespace vexa {

namespace {

constexpr ParameterRow kParameters[] = {
    kDocumentFile,
    kNotesCaptions,
    yesOrNo("SLIDETITLES"),
    kWideTablesRow,
    sizeRow("SLIDESIZE"),
    marginRow("TOPMARGIN"),
    marginRow("BOTTOMMARGIN"),
    marginRow("LEFTMARGIN"),
    marginRow("RIGHTMARGIN"),
};

constexpr KeywordOption<ExportPPTSpec> kKeywords[] = {
    {"NOTESCAPTIONS", kYesNoChoices, setNumber<ExportPPTSpec, &ExportPPTSpec::setNotesAndCaptions>},
    {"WIDETABLES", kWideTables, setNumber<ExportPPTSpec, &ExportPPTSpec::setWideTables>},
    {"SLIDETITLES", kYesNoChoices, setNumber<ExportPPTSpec, &ExportPPTSpec::setSlideTitles>},
};

bool readSlideSize(const SubComObj& given, ParserMessage& messages, ExportPPTSpec& ppt) {
    const SizeValue size = readSize(given, "SLIDESIZE", messages);
    if (size.width && size.height) {
        ppt.setSlideSizeWidth(size.unit, size.width->number, size.width->text);
        ppt.setSlideSizeHeight(size.unit, size.height->number, size.height->text);
    }
    return size.valid;
}

bool readSlideAndMargins(const SubComObj& given, ParserMessage& messages, ExportPPTSpec& ppt) {
    const bool valid = readSlideSize(given, messages, ppt);
    return readMargins(given, messages, ppt) && valid;
}

}  // namespace

constexpr SubcommandRow kPptGrammar{"PPT", UPSpecTypes::SubComSpec::keywordParameters, false, false,
                                    kParameters};

bool readPpt(const CommandSpec& command, ParserMessage& messages, ExportPPTSpec& ppt, std::string& path) {
    return readDocument<ExportPPTSpec>(kPptGrammar, command, messages, ppt, path, kKeywords,
                                       readSlideAndMargins);
}

}  // namespace vexa
