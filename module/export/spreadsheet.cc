// XLS, XLSX and XLSM: sheets of a workbook, in three formats that take the same.

#include "module/export/format_values.h"
#include "module/export/formats.h"
#include "module/export/targets.h"
#include "module/frame/given_values.h"

namespace vexa {

namespace {

using Spec = UPSpecTypes::ParamSpec;
using Operation = ExportXLSSpec::OPERATION;
using Location = ExportXLSSpec::LOCATION;

constexpr Choice kOperations[] = {{"CREATEFILE", 0}, {"CREATESHEET", 1}, {"MODIFYSHEET", 2}};
constexpr auto kOperationWords = wordsOf(kOperations);
constexpr QualifierRow kLocations[] = {
    {"LASTCOLUMN", Spec::keyword}, {"LASTROW", Spec::keyword}, {"STARTCELL", Spec::literalOrWord, "cell"}};

constexpr ParameterRow kParameters[] = {
    kDocumentFile,
    optionalParameter("OPERATION", Spec::word).of(kOperationWords),
    optionalParameter("SHEET", Spec::literalOrWord, "sheet"),
    optionalParameter("LOCATION", Spec::qualifiedValue).qualifiedBy(kLocations),
    kNotesCaptions,
};

constexpr KeywordOption<ExportXLSSpec> kKeywords[] = {
    {"NOTESCAPTIONS", kYesNoChoices, setNumber<ExportXLSSpec, &ExportXLSSpec::setNotesAndCaptions>},
};

constexpr SystemText kNoFile = "^1 was specified, but file \"^2\" does not exist..."_text;

constexpr SubcommandRow grammar(std::string_view name) {
    return {name, UPSpecTypes::SubComSpec::keywordParameters, false, false, kParameters};
}

/// A sheet can be added to or changed only in a file that is there; else the file is made.
Operation readOperation(const SubComObj& given, const DocumentFile& file, ParserMessage& messages) {
    const int chosen = chosenNumber(given, "OPERATION", kOperations);
    const auto operation = chosen < 0 ? Operation::CREATEFILE : static_cast<Operation>(chosen);
    if (operation == Operation::CREATEFILE || file.exists) {
        return operation;
    }
    messages.GenericWarning(kNoFile, {kOperations[static_cast<int>(operation)].word, file.path});
    return Operation::CREATEFILE;
}

std::optional<TextValue> textOf(const ParamObj* parameter) {
    return parameter != nullptr ? textValue(*parameter) : std::nullopt;
}

bool readSheet(const SubComObj& given, Operation operation, ParserMessage& messages, ExportXLSSpec& sheet) {
    const ParamObj* const parameter = given.getParamObj("SHEET");
    if (const std::optional<TextValue> name = textOf(parameter)) {
        sheet.setSheet(name->text);
    }
    if (parameter == nullptr && operation == Operation::MODIFYSHEET) {
        messages.ParamNeedParam("SHEET", "OPERATION", "MODIFYSHEET");
        return false;
    }
    return true;
}

void readLocation(const SubComObj& given, ExportXLSSpec& sheet) {
    const ParamObj* const parameter = given.getParamObj("LOCATION");
    const std::optional<QualifierObj> location =
        parameter != nullptr ? parameter->getQualifier() : std::nullopt;
    if (!location) {
        return;
    }
    if (AreStringsEqualCase(location->name(), "LASTCOLUMN")) {
        sheet.setLocation(Location::LASTCOLUMN);
    } else if (AreStringsEqualCase(location->name(), "LASTROW")) {
        sheet.setLocation(Location::LASTROW);
    } else {
        sheet.setLocation(Location::STARTCELL);
        if (const std::optional<TextValue> cell = textOf(&*location)) {
            sheet.setStartCell(cell->text);
        }
    }
}

bool readSpreadsheet(std::string_view name, const CommandSpec& command, ParserMessage& messages,
                     ExportXLSSpec& sheet, std::string& path) {
    const SubComObj* const given = command.getSubComObj(name);
    if (given == nullptr) {
        return false;
    }
    const DocumentFile file = readDocumentFile(*given, messages, sheet);
    path = file.path;
    const Operation operation = readOperation(*given, file, messages);
    sheet.setOperation(operation);
    const bool valid = readSheet(*given, operation, messages, sheet) && file.valid;
    readLocation(*given, sheet);
    readKeywords<ExportXLSSpec>(*given, kKeywords, sheet);
    return finish(sheet, valid);
}

}  // namespace

constexpr SubcommandRow kXlsGrammar = grammar("XLS");
constexpr SubcommandRow kXlsxGrammar = grammar("XLSX");
constexpr SubcommandRow kXlsmGrammar = grammar("XLSM");

bool readXls(const CommandSpec& command, ParserMessage& messages, ExportXLSSpec& xls, std::string& path) {
    return readSpreadsheet("XLS", command, messages, xls, path);
}

bool readXlsx(const CommandSpec& command, ParserMessage& messages, ExportXLSSpec& xlsx, std::string& path) {
    return readSpreadsheet("XLSX", command, messages, xlsx, path);
}

bool readXlsm(const CommandSpec& command, ParserMessage& messages, ExportXLSSpec& xlsm, std::string& path) {
    return readSpreadsheet("XLSM", command, messages, xlsm, path);
}

}  // namespace vexa
