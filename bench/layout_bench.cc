// Laying out documents of 100 to 10,000 tables of 40 x 8 numbers: the time of a table must not depend on
// their number.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "apps/rendering/table_rendering.h"
#include "backend/tables/layout/table_grid.h"
#include "bench/measure.h"
#include "bench/ratios.h"

namespace vexa::bench {

namespace {

constexpr std::size_t kRows = 40;
constexpr std::size_t kColumns = 8;

tables::TableDimension dimension(const std::string& label, std::size_t categories) {
    tables::TableDimension made;
    made.label = label;
    for (std::size_t i = 0; i < categories; ++i) {
        made.categories.push_back({label + ' ' + std::to_string(i), tables::noGroup, {}, {}, {}});
    }
    return made;
}

/// Numbers that depend on `seed`, with two decimals.
tables::Table measuredValues(std::size_t seed) {
    std::vector<tables::TableDimension> dimensions{dimension("Variable", kRows),
                                                   dimension("Statistic", kColumns)};
    for (tables::TableCategory& category : dimensions[1].categories) {
        category.format = {tables::FormatKind::plain, 8, 2};
    }
    tables::TableDataBuilder data(std::move(dimensions));
    std::uint32_t random = static_cast<std::uint32_t>(seed) * 2654435761U + 1;
    for (tables::Place place = 0; place < kRows * kColumns; ++place) {
        random = random * 1664525U + 1013904223U;
        data.setNumber(place, static_cast<double>(random >> 8) / 1000);
    }
    tables::TableView view;
    view.title = "Measured values of study " + std::to_string(seed);
    view.rows = {0};
    view.columns = {1};
    return tables::makeTable(data.finish(), std::move(view));
}

std::vector<tables::Table> study(std::int64_t count) {
    std::vector<tables::Table> made;
    for (std::int64_t i = 0; i < count; ++i) made.push_back(measuredValues(static_cast<std::size_t>(i)));
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
