// Laying out documents of 100 to 10,000 tables of 40 x 8 numbers: the time of a table must not depend on
// their number.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "apps/rendering/table_rendering.h"
#include "backend/tables/layout/table_grid.h"
#include "bench/measure.h"
#include "bench/ratios.h"
#include "bench/study_tables.h"

namespace vexa::bench {

namespace {

std::vector<tables::Table> study(std::int64_t count) {
    std::vector<tables::Table> made;
    for (std::int64_t i = 0; i < count; ++i) made.push_back(studyTable(static_cast<std::size_t>(i)));
    return made;
}

void layOutAll(benchmark::State& state, bool rendering) {
    const std::vector<tables::Table> all = study(state.range(0));
    const std::string name = (rendering ? "render/" : "layout/") + std::to_string(state.range(0));
    rendering::RenderOptions options;
    options.width = 120;
    measure(state, name, state.range(0), [&] {
        for (const tables::Table& table : all) {
            if (rendering) {
                benchmark::DoNotOptimize(rendering::renderTable(table, options).size());
            } else {
                benchmark::DoNotOptimize(layOut(table).cells.size());
            }
        }
    });
}

[[maybe_unused]] const bool registered = [] {
    const auto add = [](const char* name, bool rendering) {
        benchmark::RegisterBenchmark(name, layOutAll, rendering)
            ->Arg(100)
            ->Arg(1000)
            ->Arg(10000)
            ->Unit(benchmark::kMillisecond);
    };
    add("LayOut", false);
    add("RenderTables", true);
    compareAtEnd("ns per table of 40 x 8, layout: 10,000 / 100 tables", "layout/10000", "layout/100");
    compareAtEnd("ns per table of 40 x 8: rendered / laid out", "render/1000", "layout/1000");
    return true;
}();

}  // namespace

}  // namespace vexa::bench
