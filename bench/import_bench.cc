// Importing results from JSON, tables of 40 x 8 numbers, beside Python's json.load of the same file, and
// printing them.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "bench/measure.h"
#include "bench/process_memory.h"
#include "bench/ratios.h"
#include "frontend/import/import_file.h"
#include "frontend/import/results_writer.h"
#include "frontend/import/statistic_words.h"

namespace vexa::bench {

namespace {

constexpr int kRows = 40;
constexpr int kColumns = 8;

/// The labels of a dimension as a list.
std::string labels(const std::string& word, int count) {
    std::string list = "[";
    for (int i = 0; i < count; ++i) {
        list += (i == 0 ? "\"" : ", \"") + word + ' ' + std::to_string(i) + '"';
    }
    return list + "]";
}

void writeResultsFile(const std::string& path, std::int64_t tables) {
    std::ofstream file(path, std::ios::binary);
    file << "{\"vexaResults\": 1, \"items\": [";
    std::uint32_t random = 1;
    for (std::int64_t table = 0; table < tables; ++table) {
        file << (table == 0 ? "" : ",\n") << "{\"type\": \"table\", \"title\": \"Measured values of study "
             << table
             << "\", \"rows\": [{\"label\": \"Variable\", \"categories\": " << labels("Variable", kRows)
             << "}], \"columns\": [{\"label\": \"Statistics\", \"categories\": "
             << labels("Statistic", kColumns) << "}], \"cells\": [";
        for (int cell = 0; cell < kRows * kColumns; ++cell) {
            random = random * 1664525U + 1013904223U;
            file << (cell == 0 ? "" : ", ") << (random >> 12) / 1000 << '.' << 100 + random % 900;
        }
        file << "]}";
    }
    file << "]}\n";
}

frontend::Imported import(const std::string& file, const frontend::ImportContext& context) {
    frontend::Imported imported;
    frontend::ImportProblem problem;
    if (!frontend::importFile(file, {}, context, imported, problem)) {
        std::abort();
    }
    return imported;
}

/// Time of json.load alone: a program that reads the file without that of one that does not.
double timeOfPeer(const ScratchFolder& folder) {
    const std::string load = "import json\nwith open('a.json', encoding='utf-8') as file: json.load(file)";
    return timeOfProgram({"python3", "-c", load}, folder.path()) -
           timeOfProgram({"python3", "-c", "import json"}, folder.path());
}

void importResults(benchmark::State& state) {
    const ScratchFolder folder;
    writeResultsFile(folder / "a.json", state.range(0));
    frontend::LookLibrary looks({});
    frontend::StatisticWords words;
    static_cast<void>(words.open(std::string(VEXA_INSTALLATION) + "/lang/statistic-roles.xml"));
    const frontend::ImportContext context{looks, words};
    const std::string count = std::to_string(state.range(0));
    measure(state, "import of results/" + count, state.range(0),
            [&] { benchmark::DoNotOptimize(import(folder / "a.json", context)); });
    remember("json.load/" + count, timeOfPeer(folder) / static_cast<double>(state.range(0)));
    compareAtEnd("import of " + count + " tables from JSON, json.load of it", "import of results/" + count,
                 "json.load/" + count);
}
BENCHMARK(importResults)->Arg(100)->Arg(1000)->Arg(10'000)->Unit(benchmark::kMillisecond);

void printResults(benchmark::State& state) {
    const ScratchFolder folder;
    writeResultsFile(folder / "a.json", state.range(0));
    frontend::LookLibrary looks({});
    const frontend::StatisticWords words;
    const frontend::Imported imported = import(folder / "a.json", {looks, words});
    measure(state, "print of results", state.range(0),
            [&] { benchmark::DoNotOptimize(frontend::writeResults(imported.outline, "", words)); });
}
BENCHMARK(printResults)->Arg(1000)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace vexa::bench
