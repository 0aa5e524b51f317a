// Exports to PPT of documents of 100 to 10,000 tables of 40 x 8 numbers: time of a table must not depend on
// their number.

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

void exportSlides(benchmark::State& state) {
    const ScratchFolder folder;
    const frontend::ViewerDocument document = documentOf(state.range(0));
    frontend::ExportRequest request;
    request.ppt.emplace();
    request.ppt->file = folder / "slides";
    measure(state, "slides/" + std::to_string(state.range(0)), state.range(0), [&] {
        if (!exportDocument(document, request, {}).response.success) std::abort();
    });
}

[[maybe_unused]] const bool registered = [] {
    benchmark::RegisterBenchmark("Export_ppt", exportSlides)
        ->Arg(100)
        ->Arg(1000)
        ->Arg(10000)
        ->Unit(benchmark::kMillisecond);
    compareAtEnd("ns per table of 40 x 8, PPT: 10,000 / 100 tables", "slides/10000", "slides/100");
    compareAtEnd("ns per table of 40 x 8, PPT / HTML", "slides/1000", "html/1000");
    return true;
}();

}  // namespace

}  // namespace vexa::bench
