// Exports to HTML, REPORT and TEXT of documents of 100 to 10,000 tables of 40 x 8 numbers: time and memory of
// a table must not depend on their number. HTML beside a straight generator that formats the same cells into
// one buffer, TEXT beside a Python script that lays out the same tables, memory beside that of the document.
//
// pandoc, which takes long, is run by hand: bench/pandoc_peer.

#include <benchmark/benchmark.h>

#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "bench/measure.h"
#include "bench/process_memory.h"
#include "bench/ratios.h"
#include "bench/study_tables.h"
#include "frontend/document/viewer_document.h"
#include "frontend/export/export_document.h"

namespace vexa::bench {

namespace {

using frontend::ViewerDocument;

frontend::ExportRequest requestFor(const std::string& format, const std::string& file) {
    frontend::ExportRequest request;
    const auto ask = [&file](auto& target) {
        target.emplace();
        target->file = file;
    };
    if (format == "html") ask(request.html);
    if (format == "report") ask(request.report);
    if (format == "text") ask(request.text);
    return request;
}

/// The whole road of an export, the file in its place included.
void write(const ViewerDocument& document, const std::string& format, const std::string& file) {
    if (!exportDocument(document, requestFor(format, file), {}).response.success) std::abort();
}

void exportAll(benchmark::State& state, const std::string& format) {
    const ScratchFolder folder;
    const ViewerDocument document = documentOf(state.range(0));
    measure(state, format + "/" + std::to_string(state.range(0)), state.range(0),
            [&] { write(document, format, folder / "page"); });
}

/// Two ways to write a number with two decimals.
std::string_view printed(double value, std::array<char, 64>& digits) {
    const int length = std::snprintf(digits.data(), digits.size(), "%.2f", value);
    return {digits.data(), static_cast<std::size_t>(length)};
}

std::string_view converted(double value, std::array<char, 64>& digits) {
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, 2);
    return {digits.data(), static_cast<std::size_t>(end.ptr - digits.data())};
}

using NumberText = std::string_view (*)(double, std::array<char, 64>&);

/// One table of a page, as somebody would write it who wants nothing but this table.
void appendStraight(std::string& page, std::size_t seed, const StudyValues& values, NumberText text) {
    page +=
        "<table class=\"t\">\n<caption>" + titleOf(seed) + "</caption>\n<thead>\n<tr><th scope=\"col\"></th>";
    for (std::size_t column = 0; column < kStudyColumns; ++column)
        page += "<th scope=\"col\">Statistic " + std::to_string(column) + "</th>";
    page += "</tr>\n</thead>\n<tbody>\n";
    std::array<char, 64> digits{};
    for (std::size_t row = 0; row < kStudyRows; ++row) {
        page += "<tr><th scope=\"row\">Variable " + std::to_string(row) + "</th>";
        for (std::size_t column = 0; column < kStudyColumns; ++column) {
            page += "<td class=\"n\">";
            page += text(values[row * kStudyColumns + column], digits);
            page += "</td>";
        }
        page += "</tr>\n";
    }
    page += "</tbody>\n</table>\n";
}

void writeStraight(benchmark::State& state, const std::string& name, NumberText text) {
    const ScratchFolder folder;
    std::vector<StudyValues> study;
    for (std::int64_t i = 0; i < state.range(0); ++i) study.push_back(measured(static_cast<std::size_t>(i)));
    measure(state, name + "/" + std::to_string(state.range(0)), state.range(0), [&] {
        std::string page = "<!DOCTYPE html>\n<html lang=\"en\">\n<head><title>March</title></head>\n<body>\n";
        for (std::size_t i = 0; i < study.size(); ++i) appendStraight(page, i, study[i], text);
        page += "</body>\n</html>\n";
        std::ofstream(folder / "page", std::ios::binary) << page;
    });
}

/// The script, and what it prints: nanoseconds a table.
void formatInPython(benchmark::State& state) {
    double each = 0;
    for (auto _ : state) {
        const std::string command =
            "python3 " VEXA_BENCH_FOLDER "/export_text_peer.py " + std::to_string(state.range(0));
        FILE* const pipe = ::popen(command.c_str(), "r");
        std::array<char, 64> line{};
        const bool isRead = pipe != nullptr && std::fgets(line.data(), line.size(), pipe) != nullptr;
        if (pipe == nullptr || ::pclose(pipe) != 0 || !isRead) {
            state.SkipWithError("the script could not be run");
            return;
        }
        each = std::strtod(line.data(), nullptr);
    }
    state.counters["ns each"] = each;
    remember("python/" + std::to_string(state.range(0)), each);
}

void makeAlone(const Arguments& arguments) {
    documentAlone() = std::make_unique<ViewerDocument>(documentOf(std::stoll(arguments.at(0))));
}

/// What an export takes beside the document, and what the document itself takes.
void memoryOf(benchmark::State& state, const std::string& format) {
    const ScratchFolder folder;
    const std::string count = std::to_string(state.range(0));
    double beside = 0;
    double document = 0;
    for (auto _ : state) {
        beside = static_cast<double>(peakMemoryOf("export page", {count, format, folder / "page"}));
        document = static_cast<double>(peakMemoryOf("document of tables", {count}));
    }
    const auto each = static_cast<double>(state.range(0));
    state.counters["bytes each"] = beside / each;
    remember(format + " memory/" + count, (beside + document) / each);
    remember("document memory/" + count, document / each);
}

void registerComparisons() {
    const std::string tables = "ns per table of 40 x 8, ";
    for (const std::string format : {"html", "report"}) {
        compareAtEnd(tables + format + " / generator with snprintf", format + "/1000", "snprintf/1000");
        compareAtEnd(tables + format + " / generator with to_chars", format + "/1000", "to_chars/1000");
    }
    compareAtEnd(tables + "TEXT / Python's formatting", "text/1000", "python/1000");
    compareAtEnd(tables + "TEXT / HTML", "text/1000", "html/1000");
    for (const std::string format : {"html", "report", "text"}) {
        compareAtEnd(tables + format + ": 10,000 / 100 tables", format + "/10000", format + "/100");
        for (const std::string count : {"/1000", "/10000"}) {
            compareAtEnd("bytes per table, " + format + count + " at its peak / document",
                         format + " memory" + count, "document memory" + count);
        }
    }
}

[[maybe_unused]] const bool registered = [] {
    registerLoneWork("export page", {makeAlone, [](const Arguments& given) {
                                         write(*documentAlone(), given.at(1), given.at(2));
                                     }});
    registerLoneWork("document of tables", {[](const Arguments&) {}, makeAlone});
    for (const std::string format : {"html", "report", "text"}) {
        benchmark::RegisterBenchmark(("Export_" + format).c_str(), exportAll, format)
            ->Arg(100)
            ->Arg(1000)
            ->Arg(10000)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("ExportMemory_" + format).c_str(), memoryOf, format)
            ->Arg(1000)
            ->Arg(10000)
            ->Iterations(1)
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::RegisterBenchmark("ExportSnprintf", writeStraight, "snprintf", printed)
        ->Arg(1000)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("ExportToChars", writeStraight, "to_chars", converted)
        ->Arg(1000)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("ExportPython", formatInPython)
        ->Arg(1000)
        ->Iterations(1)
        ->Unit(benchmark::kMillisecond);
    registerComparisons();
    return true;
}();

}  // namespace

}  // namespace vexa::bench
