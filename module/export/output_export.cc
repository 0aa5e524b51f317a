// OUTPUT EXPORT: exports a document to one document format, to images, or both. The command becomes one
// export specification; the front end writes the files.

#include <initializer_list>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

#include "backend/viewerxml/export_xml.h"
#include "module/export/commands.h"
#include "module/export/export_response.h"
#include "module/export/format_values.h"
#include "module/export/formats.h"
#include "module/frame/command.h"
#include "module/frame/given_values.h"
#include "module/frame/report.h"
#include "module/frame/xml_text.h"

namespace vexa {

namespace {

using Spec = UPSpecTypes::ParamSpec;

constexpr CommandIdentity kIdentity{"OUTPUT EXPORT", "Output Export"_text, "OUTPUT EXPORT"};

constexpr Choice kPrintOptions[] = {{"ALWAYS", 0}, {"NEVER", 1}, {"ERRORS", 2}};
constexpr Choice kExportTypes[] = {{"ALL", 0}, {"VISIBLE", 1}};
constexpr Choice kLayers[] = {{"PRINTSETTING", 0}, {"ALL", 1}, {"VISIBLE", 2}};
constexpr auto kPrintWords = wordsOf(kPrintOptions);
constexpr auto kExportWords = wordsOf(kExportTypes);
constexpr auto kLayerWords = wordsOf(kLayers);

constexpr ParameterRow kParameters[] = {
    optionalParameter("NAME", Spec::tokens, "name").readOnly(UPSpecTypes::ReadValue::textOrOperator),
    optionalParameter("PRINT", Spec::word).of(kPrintWords),
};

constexpr ParameterRow kContentsParameters[] = {
    optionalParameter("EXPORT", Spec::word).of(kExportWords),
    optionalParameter("LAYERS", Spec::word).of(kLayerWords),
    optionalParameter("MODELVIEWS", Spec::word).of(kLayerWords),
};

constexpr SubcommandRow kLeading{"", UPSpecTypes::SubComSpec::keywordParameters, false, false, kParameters};
constexpr SubcommandRow kContents{"CONTENTS", UPSpecTypes::SubComSpec::keywordParameters, false, false,
                                  kContentsParameters};

/// The subcommands in the order of the syntax table.
void describe(CommandDescriptor& descriptor) {
    const SubcommandRow* const rows[] = {
        &kLeading,    &kContents,    &kDocGrammar, &kHtmlGrammar, &kReportGrammar, &kPdfGrammar,
        &kPptGrammar, &kTextGrammar, &kXlsGrammar, &kXlsxGrammar, &kXlsmGrammar,   &kBmpGrammar,
        &kEmfGrammar, &kEpsGrammar,  &kJpgGrammar, &kPngGrammar,  &kTifGrammar};
    descriptor.reserveSubComs(std::size(rows));
    for (const SubcommandRow* const row : rows) {
        descriptor.addSubComDesc(vexa::describe(*row));
    }
}

constexpr SystemText kTwoImages =
    "Exporting to more than one image type in a single OUTPUT EXPORT command is not allowed..."_text;
// Names HTML and TEXT alone, though REPORT may have images too; this is meant.
constexpr SystemText kImagesBesideDocument =
    "Image file formats cannot be specified for document types other than HTML and TEXT..."_text;
constexpr SystemText kTwoDocuments =
    "Exporting to more than one document type in a single OUTPUT EXPORT command is not allowed."_text;

/// One run of the command.
class ExportCommand : public Command {
  public:
    ExportCommand() : Command(kIdentity, {}) { describe(descriptor()); }

    /// Once it is parsed.
    void run();

  private:
    void readGlobal();
    void readContents();
    /// 1 when the format was read, 0 otherwise; the file of one that was read is what reports name.
    template <typename Format>
    [[nodiscard]] int readDocument(ReadDocument<Format> read, Format& format) {
        std::string path;
        if (!read(spec(), messages(), format, path)) {
            return 0;
        }
        documentFile_ = std::move(path);
        return 1;
    }
    [[nodiscard]] int readTextDocuments();
    [[nodiscard]] int readImages(bool rootRequired);
    [[nodiscard]] int readOtherDocuments();
    void dropImages();
    void send();

    ExportSpec export_;
    std::string documentFile_;
};

void ExportCommand::readGlobal() {
    const ParamObj* const name = leading().getParamObj("NAME");
    if (const std::optional<TextValue> value = name != nullptr ? textValue(*name) : std::nullopt) {
        export_.global().setName(escapeXml(value->text));
    }
    const KeywordOption<ExportGlobalSpec> options[] = {
        {"PRINT", kPrintOptions, setNumber<ExportGlobalSpec, &ExportGlobalSpec::setPrintOption>}};
    readKeywords<ExportGlobalSpec>(leading(), options, export_.global());
}

void ExportCommand::readContents() {
    const SubComObj* const given = spec().getSubComObj("CONTENTS");
    if (given == nullptr) {
        return;
    }
    const KeywordOption<ExportContentsSpec> options[] = {
        {"EXPORT", kExportTypes, setNumber<ExportContentsSpec, &ExportContentsSpec::setExport>},
        {"LAYERS", kLayers, setNumber<ExportContentsSpec, &ExportContentsSpec::setLayers>},
        {"MODELVIEWS", kLayers, setNumber<ExportContentsSpec, &ExportContentsSpec::setModelViews>}};
    export_.contents().setModelViews(ExportContentsSpec::MODELVIEWS_TYPE::PRINTSETTING);
    readKeywords<ExportContentsSpec>(*given, options, export_.contents());
}

/// The formats that images can go with. How many were read.
int ExportCommand::readTextDocuments() {
    int count = 0;
    count += readDocument(readHtml, export_.html());
    count += readDocument(readReport, export_.report());
    count += readDocument(readText, export_.text());
    return count;
}

int ExportCommand::readImages(bool rootRequired) {
    int count = 0;
    count += readBmp(spec(), messages(), export_.bmp(), rootRequired) ? 1 : 0;
    count += readEmf(spec(), messages(), export_.emf(), rootRequired) ? 1 : 0;
    count += readEps(spec(), messages(), export_.eps(), rootRequired) ? 1 : 0;
    count += readJpg(spec(), messages(), export_.jpg(), rootRequired) ? 1 : 0;
    count += readPng(spec(), messages(), export_.png(), rootRequired) ? 1 : 0;
    count += readTif(spec(), messages(), export_.tif(), rootRequired) ? 1 : 0;
    return count;
}

int ExportCommand::readOtherDocuments() {
    int count = 0;
    count += readDocument(readDoc, export_.doc());
    count += readDocument(readPdf, export_.pdf());
    count += readDocument(readPpt, export_.ppt());
    count += readDocument(readXls, export_.xls());
    count += readDocument(readXlsx, export_.xlsx());
    count += readDocument(readXlsm, export_.xlsm());
    return count;
}

void ExportCommand::dropImages() {
    for (ExportFormat* const images :
         std::initializer_list<ExportFormat*>{&export_.bmp(), &export_.emf(), &export_.eps(), &export_.jpg(),
                                              &export_.png(), &export_.tif()}) {
        images->setOptionPresent(false);
    }
}

void ExportCommand::send() {
    const std::string specification = ExportXML::convertToXML(export_);
    const ExportReporting reporting(procedure(), export_.global().getPrintOption(), documentFile_);
    reporting.send(specification);
}

void ExportCommand::run() {
    readGlobal();
    readContents();
    const int textDocuments = readTextDocuments();
    int images = readImages(textDocuments == 0);
    if (images > 1) {
        reportPlain(kTwoImages, kWarningLevel);  // and all of them are exported; this is meant
    }
    const int otherDocuments = readOtherDocuments();
    if (otherDocuments > 0 && images > 0) {
        reportPlain(kImagesBesideDocument, kWarningLevel);
        dropImages();
        images = 0;
    }
    if (textDocuments + otherDocuments > 1) {
        reportPlain(kTwoDocuments, kErrorLevel);
    } else if (textDocuments + otherDocuments + images > 0) {
        send();
    } else {
        messages().SubComRequired({"DOC", "HTML", "REPORT", "PDF", "PPT", "TEXT", "XLS", "XLSX", "XLSM",
                                   "BMP", "EMF", "EPS", "JPG", "PNG", "TIF"});
    }
}

}  // namespace

void outputExport() {
    ExportCommand command;
    if (command.parse()) {
        command.run();
    }
}

}  // namespace vexa
