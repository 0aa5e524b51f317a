// Exports to DOC, in both of its forms, of documents of 100 to 10,000 tables of 40 x 8 numbers: time of a
// table must not depend on their number.
//
// pandoc and LibreOffice, which take long, are run by hand: bench/word_peer.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>

#include "bench/measure.h"
#include "bench/ratios.h"
#include "bench/study_tables.h"
#include "frontend/document/viewer_document.h"
#include "frontend/export/export_document.h"

namespace vexa::bench {

namespace {

void exportWord(benchmark::State& state, const std::string& extension) {
    const ScratchFolder folder;
    const frontend::ViewerDocument document = documentOf(state.range(0));
    frontend::ExportRequest request;
    request.doc = frontend::DocExport{};
    request.doc->file = folder.path() + "/a." + extension;
    measure(state, extension + "/" + std::to_string(state.range(0)), state.range(0), [&] {
        if (!exportDocument(document, request, {}).response.success) std::abort();
    });
}

[[maybe_unused]] const bool registered = [] {
    for (const std::string extension : {"docx", "rtf"}) {
        benchmark::RegisterBenchmark(("Export_" + extension).c_str(), exportWord, extension)
            ->Arg(100)
            ->Arg(1000)
            ->Arg(10000)
            ->Unit(benchmark::kMillisecond);
        compareAtEnd("ns per table of 40 x 8, " + extension + ": 10,000 / 100 tables", extension + "/10000",
                     extension + "/100");
    }
    compareAtEnd("ns per table of 40 x 8, docx / HTML", "docx/1000", "html/1000");
    return true;
}();

}  // namespace

}  // namespace vexa::bench
