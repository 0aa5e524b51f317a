// PPT: a presentation.

#include "module/export/format_values.h"
#include "module/export/formats.h"
#include "module/export/targets.h"

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

}  // namespace

constexpr SubcommandRow kPptGrammar{"PPT", UPSpecTypes::SubComSpec::keywordParameters, false, false,
                                    kParameters};

bool readPpt(const CommandSpec& command, ParserMessage& messages, ExportPPTSpec& ppt, std::string& path) {
    const SubComObj* const given = command.getSubComObj("PPT");
    if (given == nullptr) {
        return false;
    }
    bool valid = readFileInto(path, *given, messages, ppt);
    readKeywords<ExportPPTSpec>(*given, kKeywords, ppt);
    valid = readSlideSize(*given, messages, ppt) && valid;
    valid = readMargins(*given, messages, ppt) && valid;
    return finish(ppt, valid);
}

}  // namespace vexa
