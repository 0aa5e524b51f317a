// Exports to workbooks of documents of 100 to 10,000 tables of 40 x 8 numbers: time and memory of a table
// must not depend on their number. Beside direct calls of libxlsxwriter for the same cells, beside openpyxl
// in both of its ways, and beside xlwt. By the clock, since packing is spread over the cores.

#include <benchmark/benchmark.h>
#include <xlsxwriter.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "bench/measure.h"
#include "bench/process_memory.h"
#include "bench/ratios.h"
#include "bench/study_tables.h"
#include "frontend/export/export_document.h"
#include "frontend/export/picture_files.h"
#include "frontend/export/workbook/sheet_builder.h"

namespace vexa::bench {

namespace {

using frontend::ViewerDocument;

template <typename Work>
void measureByClock(benchmark::State& state, const std::string& name, Work work) {
    const double start = elapsedTime();
    for (auto _ : state) work();
    const double each = (elapsedTime() - start) / static_cast<double>(state.iterations() * state.range(0));
    state.counters["ns each"] = each;
    remember(name + "/" + std::to_string(state.range(0)), each);
}

/// The whole road of an export, the file in its place included.
bool write(const ViewerDocument& document, const std::string& format, const std::string& file) {
    frontend::ExportRequest request;
    auto& target = format == "xls" ? request.xls : request.xlsx;
    target.emplace();
    target->file = file;
    return exportDocument(document, request, {}).response.success;
}

void exportAll(benchmark::State& state, const std::string& format) {
    const ScratchFolder folder;
    const ViewerDocument document = documentOf(state.range(0));
    bool isWritten = true;
    measureByClock(state, format, [&] { isWritten = write(document, format, folder / "book") && isWritten; });
    if (!isWritten) state.SkipWithError("not written");
}

/// The sheet alone, before anything is written.
void buildSheetAlone(benchmark::State& state) {
    const ViewerDocument document = documentOf(state.range(0));
    const frontend::ExportPlan plan = planExport(document.outline(), {});
    measureByClock(state, "sheet", [&] {
        const frontend::ExportRequest request;
        const frontend::ExportSurroundings surroundings;
        frontend::OutputFiles files;
        frontend::ExportReport report;
        frontend::PictureFiles pictures(request, {}, {}, {}, files, report);
        const frontend::ExportTask task{document, plan, request, surroundings, files, report, pictures};
        benchmark::DoNotOptimize(buildSheet(task, frontend::officeSheetLimits, true).cells.data());
    });
}

/// One table with direct calls, the cells alone.
struct DirectBook {
    explicit DirectBook(const std::string& file) : book(workbook_new(file.c_str())) {
        sheet = workbook_add_worksheet(book, "Output");
        title = workbook_add_format(book);
        format_set_bold(title);
        label = workbook_add_format(book);
        format_set_text_wrap(label);
        number = workbook_add_format(book);
        format_set_num_format(number, "0.00");
    }

    void addTable(std::size_t seed, const StudyValues& values) {
        worksheet_merge_range(sheet, row, 0, row, kStudyColumns, titleOf(seed).c_str(), title);
        ++row;
        worksheet_merge_range(sheet, row, 1, row, kStudyColumns, "Statistic", label);
        ++row;
        worksheet_write_string(sheet, row, 0, "Variable", label);
        for (std::size_t i = 0; i < kStudyColumns; ++i) {
            const std::string text = "Statistic " + std::to_string(i);
            worksheet_write_string(sheet, row, static_cast<lxw_col_t>(i + 1), text.c_str(), label);
        }
        ++row;
        for (std::size_t line = 0; line < kStudyRows; ++line, ++row) {
            const std::string text = "Variable " + std::to_string(line);
            worksheet_write_string(sheet, row, 0, text.c_str(), label);
            for (std::size_t i = 0; i < kStudyColumns; ++i) {
                worksheet_write_number(sheet, row, static_cast<lxw_col_t>(i + 1),
                                       values[line * kStudyColumns + i], number);
            }
        }
        ++row;
    }

    lxw_workbook* book;
    lxw_worksheet* sheet = nullptr;
    lxw_format* title = nullptr;
    lxw_format* label = nullptr;
    lxw_format* number = nullptr;
    lxw_row_t row = 0;
};

void writeDirectly(benchmark::State& state) {
    const ScratchFolder folder;
    std::vector<StudyValues> study;
    for (std::int64_t i = 0; i < state.range(0); ++i) study.push_back(measured(static_cast<std::size_t>(i)));
    measureByClock(state, "libxlsxwriter", [&] {
        DirectBook direct(folder / "book.xlsx");
        for (std::size_t i = 0; i < study.size(); ++i) direct.addTable(i, study[i]);
        if (workbook_close(direct.book) != LXW_NO_ERROR) std::abort();
    });
}

/// The script, and what it prints: nanoseconds a table.
void writeInPython(benchmark::State& state, const std::string& way) {
    double each = 0;
    for (auto _ : state) {
        const std::string command = "/usr/bin/python3 " VEXA_BENCH_FOLDER "/export_workbook_peer.py " + way +
                                    " " + std::to_string(state.range(0));
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
    remember((way == "xlwt" ? "" : "openpyxl ") + way + "/" + std::to_string(state.range(0)), each);
}

void makeAlone(const Arguments& arguments) {
    documentAlone() = std::make_unique<ViewerDocument>(documentOf(std::stoll(arguments.at(0))));
}

/// What an export takes beside the document, bytes a table.
void memoryOf(benchmark::State& state, const std::string& format) {
    const ScratchFolder folder;
    const std::string count = std::to_string(state.range(0));
    double beside = 0;
    for (auto _ : state) {
        beside = static_cast<double>(peakMemoryOf("export workbook", {count, format, folder / "book"}));
    }
    beside /= static_cast<double>(state.range(0));
    state.counters["bytes each"] = beside;
    remember(format + " memory/" + count, beside);
}

void registerComparisons() {
    const std::string tables = "ns per table of 40 x 8, ";
    compareAtEnd(tables + "XLSX / direct calls of libxlsxwriter", "xlsx/1000", "libxlsxwriter/1000");
    compareAtEnd(tables + "XLSX / openpyxl write-only", "xlsx/1000", "openpyxl write-only/1000");
    compareAtEnd(tables + "XLSX / openpyxl", "xlsx/1000", "openpyxl normal/1000");
    compareAtEnd(tables + "XLS / direct calls of libxlsxwriter for XLSX", "xls/1000", "libxlsxwriter/1000");
    compareAtEnd(tables + "XLS / xlwt", "xls/1000", "xlwt/1000");
    compareAtEnd(tables + "the sheet alone / XLSX", "sheet/1000", "xlsx/1000");
    for (const std::string format : {"xlsx", "xls"}) {
        compareAtEnd(tables + format + ": 1,000 / 100 tables", format + "/1000", format + "/100");
    }
    compareAtEnd(tables + "xlsx: 10,000 / 100 tables", "xlsx/10000", "xlsx/100");
    compareAtEnd("bytes per table, xlsx: 10,000 / 1,000 tables", "xlsx memory/10000", "xlsx memory/1000");
}

[[maybe_unused]] const bool registered = [] {
    registerLoneWork("export workbook",
                     {makeAlone, [](const Arguments& given) {
                          static_cast<void>(write(*documentAlone(), given.at(1), given.at(2)));
                      }});
    benchmark::RegisterBenchmark("Export_xlsx", exportAll, "xlsx")
        ->Arg(100)
        ->Arg(1000)
        ->Arg(10000)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("Export_xls", exportAll, "xls")
        ->Arg(100)
        ->Arg(1000)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("ExportSheetAlone", buildSheetAlone)
        ->Arg(100)
        ->Arg(1000)
        ->Arg(10000)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("ExportMemory_xlsx", memoryOf, "xlsx")
        ->Arg(1000)
        ->Arg(10000)
        ->Iterations(1)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("ExportLibxlsxwriter", writeDirectly)
        ->Arg(1000)
        ->Unit(benchmark::kMillisecond);
    for (const std::string way : {"write-only", "normal", "xlwt"}) {
        benchmark::RegisterBenchmark(("ExportInPython_" + way).c_str(), writeInPython, way)
            ->Arg(1000)
            ->Iterations(1)
            ->Unit(benchmark::kMillisecond);
    }
    registerComparisons();
    return true;
}();

}  // namespace

}  // namespace vexa::bench
