// Saving and opening a document of 1,000 and 10,000 tables of 40 x 8 cells, beside zip and unzip of the same
// bytes.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "bench/measure.h"
#include "bench/process_memory.h"
#include "bench/ratios.h"
#include "frontend/document/viewer_document.h"
#include "frontend/store/document_file.h"

namespace vexa::bench {

namespace {

using frontend::ViewerDocument;

constexpr std::size_t kRows = 40;
constexpr std::size_t kColumns = 8;
constexpr double kMebibyte = 1024.0 * 1024.0;

tables::TableDimension dimension(const std::string& label, std::size_t categories) {
    tables::TableDimension result;
    result.label = label;
    for (std::size_t i = 0; i < categories; ++i) {
        result.categories.push_back({label + ' ' + std::to_string(i), tables::noGroup, {}, {}, {}});
    }
    return result;
}

/// A table whose numbers depend on `seed`, so that no two tables are the same bytes.
tables::Table makeTable(std::size_t seed) {
    tables::TableDataBuilder data({dimension("Variable", kRows), dimension("Statistic", kColumns)});
    std::uint32_t random = static_cast<std::uint32_t>(seed) * 2654435761U + 1;
    for (std::uint64_t place = 0; place < kRows * kColumns; ++place) {
        random = random * 1664525U + 1013904223U;
        data.setNumber(place, static_cast<double>(random >> 8) / 1000, {tables::FormatKind::plain, 8, 2});
    }
    tables::TableView view;
    view.title = "Measured values of study " + std::to_string(seed);
    view.rows = {0};
    view.columns = {1};
    return tables::makeTable(data.finish(), std::move(view));
}

ViewerDocument makeDocument(std::int64_t tables) {
    ViewerDocument document;
    for (std::int64_t i = 0; i < tables; ++i) {
        frontend::Item item;
        item.label = "Measured values";
        item.command = "MEASURE";
        item.content = frontend::TableContent{makeTable(static_cast<std::size_t>(i))};
        document.add(std::move(item));
    }
    return document;
}

void require(bool ok) {
    if (!ok) {
        std::abort();
    }
}

void finish(benchmark::State& state, const std::string& name, double perRound, std::size_t peakMemory) {
    const std::string key = name + "/" + std::to_string(state.range(0));
    state.counters["ms"] = perRound / 1e6;
    state.counters["peak MiB"] = static_cast<double>(peakMemory) / kMebibyte;
    state.SetItemsProcessed(state.iterations() * state.range(0));
    remember(key + " time", perRound / 1e6);
    remember(key + " memory", static_cast<double>(peakMemory) / kMebibyte);
}

void save(benchmark::State& state) {
    const ScratchFolder folder;
    const std::string file = folder / "bench.vxv";
    const ViewerDocument document = makeDocument(state.range(0));
    const double start = elapsedTime();
    for (auto _ : state) {
        require(static_cast<bool>(saveDocument(document, file, {})));
    }
    const double perRound = (elapsedTime() - start) / static_cast<double>(state.iterations());
    finish(state, "save", perRound, peakMemoryOf("save", {std::to_string(state.range(0)), file}));
}

void openOnce(const std::string& file) {
    std::unique_ptr<ViewerDocument> document;
    require(static_cast<bool>(openDocument(file, "", document)));
    benchmark::DoNotOptimize(document);
}

void open(benchmark::State& state) {
    const ScratchFolder folder;
    const std::string file = folder / "bench.vxv";
    require(static_cast<bool>(saveDocument(makeDocument(state.range(0)), file, {})));
    const double start = elapsedTime();
    for (auto _ : state) {
        openOnce(file);
    }
    const double perRound = (elapsedTime() - start) / static_cast<double>(state.iterations());
    finish(state, "open", perRound, peakMemoryOf("open", {file}));
}

/// The parts of a saved document as files of a folder.
void unpack(const ScratchFolder& folder, std::int64_t tables) {
    require(static_cast<bool>(saveDocument(makeDocument(tables), folder / "bench.vxv", {})));
    std::filesystem::create_directory(folder / "parts");
    require(timeOfProgram({"unzip", "-q", "../bench.vxv"}, folder / "parts") >= 0);
}

void peer(benchmark::State& state, const std::string& name, const Arguments& command) {
    const ScratchFolder folder;
    unpack(folder, state.range(0));
    double total = 0;
    for (auto _ : state) {
        std::filesystem::remove(folder / "again.zip");
        const double start = elapsedTime();
        require(timeOfProgram(command, folder / "parts") >= 0);
        total += elapsedTime() - start;
    }
    std::filesystem::remove(folder / "again.zip");
    finish(state, name, total / static_cast<double>(state.iterations()),
           peakMemoryOfProgram(command, folder / "parts"));
}

void zip(benchmark::State& state) { peer(state, "zip", {"zip", "-q", "-r", "../again.zip", "."}); }

void unzip(benchmark::State& state) { peer(state, "unzip", {"unzip", "-q", "-o", "../bench.vxv"}); }

/// The document of the work "save", which its preparation makes.
ViewerDocument& loneDocument() {
    static ViewerDocument document;
    return document;
}

[[maybe_unused]] const bool registered = [] {
    registerLoneWork("save",
                     {[](const Arguments& given) { loneDocument() = makeDocument(std::stoll(given[0])); },
                      [](const Arguments& given) {
                          require(static_cast<bool>(saveDocument(loneDocument(), given[1], {})));
                      }});
    registerLoneWork("open", {[](const Arguments&) {}, [](const Arguments& given) { openOnce(given[0]); }});
    const std::pair<const char*, void (*)(benchmark::State&)> all[] = {
        {"DocumentSave", save}, {"Zip", zip}, {"DocumentOpen", open}, {"Unzip", unzip}};
    for (const auto& [name, function] : all) {
        benchmark::RegisterBenchmark(name, function)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
    }
    for (const std::string count : {"/1000", "/10000"}) {
        const std::string tables = count.substr(1) + " tables: ";
        compareAtEnd(tables + "save / zip, ms", "save" + count + " time", "zip" + count + " time");
        compareAtEnd(tables + "save / zip, MiB at the peak", "save" + count + " memory",
                     "zip" + count + " memory");
        compareAtEnd(tables + "open / unzip, ms", "open" + count + " time", "unzip" + count + " time");
        compareAtEnd(tables + "open / unzip, MiB at the peak", "open" + count + " memory",
                     "unzip" + count + " memory");
    }
    return true;
}();

}  // namespace

}  // namespace vexa::bench
