// OUTPUT EXPORT with a full DOC subcommand over the whole road, and what of it is spent where Xerces-C works:
// in making the export specification's XML and in reading the answer.
//
// The road: a syntax file is cut into commands, each is cut into tokens, parsed and read, its file is looked
// up, the export specification is written as XML, which an adapter answers at once; the answer is read and
// becomes notes and a table. No file is written.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "backend/adapter/client_adapter.h"
#include "backend/paths/file_specification.h"
#include "backend/platform/file_system.h"
#include "backend/session/session.h"
#include "backend/viewerxml/export_xml.h"
#include "backend/viewerxml/response_spec.h"
#include "backend/viewerxml/xml_platform.h"
#include "bench/measure.h"
#include "bench/ratios.h"

namespace vexa::bench {

namespace {

constexpr std::int64_t kCommands = 2'000;

std::string documentFile() { return (std::filesystem::temp_directory_path() / "march.doc").string(); }

std::string exportCommand() {
    return "OUTPUT EXPORT\n"
           "  /DOC DOCUMENTFILE='" +
           documentFile() +
           "' NOTESCAPTIONS=YES WIDETABLES=WRAP\n"
           "    PAGESIZE=MM(210 297) TOPMARGIN=MM(25) BOTTOMMARGIN=MM(20) LEFTMARGIN=MM(22.5)\n"
           "    RIGHTMARGIN=MM(22.5) PAGEBREAKS=YES.\n";
}

/// What the command fills, by hand.
void fill(ExportSpec& spec) {
    constexpr MEASUREMENT_TYPE kMm = MEASUREMENT_TYPE::MM;
    ExportDocSpec& doc = spec.doc();
    doc.setDocumentFile(toBackslashPath(documentFile()));
    doc.setNotesAndCaptions(true);
    doc.setWideTables(WideTablesSetting::WIDE_TABLES::WRAP);
    doc.setPageSizeWidth(kMm, 210, "210");
    doc.setPageSizeHeight(kMm, 297, "297");
    doc.setTopMargin(kMm, 25, "25");
    doc.setBottomMargin(kMm, 20, "20");
    doc.setLeftMargin(kMm, 22.5, "22.5");
    doc.setRightMargin(kMm, 22.5, "22.5");
    doc.setPageBreaks(true);
    doc.setOptionPresent(true);
}

std::string answer() {
    return "<exportResponse success=\"true\" name=\"march\" documentFile=\"" + documentFile() +
           "\" imageCount=\"0\"/>";
}

class AnsweringAdapter : public ClientAdapter {
  public:
    bool isLocalMode() override { return true; }
    OutputController* outputController() override { return nullptr; }
    std::string exchangeExport(const std::string& text) override {
        specification = text;
        ++exports;
        return answer_;
    }
    std::string exchangeModify(const std::string& /*request*/) override { return {}; }

    std::string specification;  ///< the last one
    std::int64_t exports = 0;

  private:
    std::string answer_ = answer();
};

std::string writtenByHand() {
    ExportSpec spec;
    fill(spec);
    return ExportXML::convertToXML(spec);
}

void exportCommands(benchmark::State& state) {
    std::string text;
    for (std::int64_t i = 0; i < kCommands; ++i) {
        text += exportCommand();
    }
    AnsweringAdapter adapter;
    installAdapter(&adapter);
    LibraryModule module(VEXA_MODULE_FILE);
    Session session(module);
    measure(state, "export command", kCommands, [&] { session.runText(text, "bench.vxs"); });
    if (session.hadErrors() || adapter.exports != state.iterations() * kCommands) {
        state.SkipWithError("not every command exported");
    } else if (adapter.specification != writtenByHand()) {
        state.SkipWithError("the export specification that is measured apart is not the command's");
    }
    installAdapter(nullptr);
}

void makeXml(benchmark::State& state) {
    ExportSpec spec;
    fill(spec);
    measure(state, "export xml", 1,
            [&spec] { benchmark::DoNotOptimize(ExportXML::convertToXML(spec).data()); });
}

void readAnswer(benchmark::State& state) {
    const std::string text = answer();
    bool read = true;
    measure(state, "export answer", 1, [&] {
        ResponseSpec response;
        read = response.processResponse(text) && read;
    });
    if (!read) {
        state.SkipWithError("the answer was not read");
    }
}

/// The library is in use already, as it is from the second command of a run on.
void holdLibrary(benchmark::State& state) {
    const XmlPlatform first;
    measure(state, "export library", 1, [] { const XmlPlatform held; });
}

void lookUpFile(benchmark::State& state) {
    const std::string path = toBackslashPath(documentFile());
    measure(state, "export file", 1, [&path] {
        int length = 0;
        int valid = 0;
        int exists = 0;
        int writable = 0;
        benchmark::DoNotOptimize(VALIDATECLIENTFILESPEC(path.c_str(), &length, &valid, &exists, &writable));
    });
}

[[maybe_unused]] const bool registered = [] {
    benchmark::RegisterBenchmark("ExportCommands", exportCommands)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("ExportXml", makeXml);
    benchmark::RegisterBenchmark("ExportAnswer", readAnswer);
    benchmark::RegisterBenchmark("ExportLibraryHeld", holdLibrary);
    benchmark::RegisterBenchmark("ExportFileLookUp", lookUpFile);
    compareAtEnd("ns, OUTPUT EXPORT: making the XML / command", "export xml", "export command");
    compareAtEnd("ns, OUTPUT EXPORT: reading the answer / command", "export answer", "export command");
    compareAtEnd("ns, OUTPUT EXPORT: holding the XML library / command", "export library", "export command");
    compareAtEnd("ns, OUTPUT EXPORT: looking up the file / command", "export file", "export command");
    return true;
}();

}  // namespace

}  // namespace vexa::bench
