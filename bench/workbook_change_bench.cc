// An export into a large workbook that is there, MODIFYSHEET, beside openpyxl, which loads and saves it.
// Workbooks of 3,300 and 33,000 rows of 13 cells; with VEXA_BENCH_ROWS=330000 one of 50 MB.

#include <benchmark/benchmark.h>
#include <xlsxwriter.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "bench/measure.h"
#include "bench/process_memory.h"
#include "bench/ratios.h"
#include "bench/study_tables.h"
#include "frontend/export/export_document.h"

namespace vexa::bench {

namespace {

constexpr std::uint16_t numbers = 12;

/// A sheet of numbers that cannot be guessed, and a text in each row.
void makeWorkbook(const std::string& file, std::int64_t rows) {
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    lxw_workbook* const book = workbook_new_opt(file.c_str(), &options);
    lxw_worksheet* const sheet = workbook_add_worksheet(book, "Data");
    std::uint64_t state = 1;
    for (std::int64_t row = 0; row < rows; ++row) {
        const auto at = static_cast<lxw_row_t>(row);
        for (std::uint16_t column = 0; column < numbers; ++column) {
            state = state * 6'364'136'223'846'793'005U + 1'442'695'040'888'963'407U;
            worksheet_write_number(sheet, at, column, static_cast<double>(state >> 11U) * 1e-13, nullptr);
        }
        worksheet_write_string(sheet, at, numbers, ("name " + std::to_string(row % 5000)).c_str(), nullptr);
    }
    if (workbook_close(book) != LXW_NO_ERROR) std::abort();
}

bool change(const std::string& file) {
    frontend::ExportRequest request;
    request.xlsx.emplace();
    request.xlsx->file = file;
    request.xlsx->operation = frontend::SheetOperation::modifySheet;
    request.xlsx->sheet = "Data";
    return exportDocument(documentOf(1), request, {}).response.success;
}

void copy(const std::string& from, const std::string& to) {
    std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing);
}

void changeWorkbook(benchmark::State& state) {
    const ScratchFolder folder;
    const std::string rows = std::to_string(state.range(0));
    makeWorkbook(folder / "book.xlsx", state.range(0));
    double elapsed = 0;
    std::int64_t rounds = 0;
    for (auto _ : state) {
        copy(folder / "book.xlsx", folder / "changed.xlsx");
        const double start = elapsedTime();
        if (!change(folder / "changed.xlsx")) state.SkipWithError("not written");
        elapsed += elapsedTime() - start;
        ++rounds;
    }
    copy(folder / "book.xlsx", folder / "changed.xlsx");
    remember("change/" + rows, elapsed / static_cast<double>(rounds));
    remember("change memory/" + rows,
             static_cast<double>(peakMemoryOf("change workbook", {folder / "changed.xlsx"})));
    const std::string script = VEXA_BENCH_FOLDER "/workbook_change_peer.py";
    const Arguments peer{"/usr/bin/python3", script, folder / "book.xlsx", folder / "saved.xlsx"};
    const double start = elapsedTime();
    remember("openpyxl change memory/" + rows, static_cast<double>(peakMemoryOfProgram(peer, folder.path())));
    remember("openpyxl change/" + rows, elapsedTime() - start);
}

std::int64_t largest() {
    const char* const asked = std::getenv("VEXA_BENCH_ROWS");
    return asked == nullptr ? 33'000 : std::strtoll(asked, nullptr, 10);
}

[[maybe_unused]] const bool registered = [] {
    registerLoneWork(
        "change workbook",
        {[](const Arguments&) {}, [](const Arguments& given) { static_cast<void>(change(given.at(0))); }});
    const std::string rows = std::to_string(largest());
    benchmark::RegisterBenchmark("ChangeWorkbook", changeWorkbook)
        ->Arg(3300)
        ->Arg(largest())
        ->Iterations(3)
        ->Unit(benchmark::kMillisecond);
    compareAtEnd("MODIFYSHEET, " + rows + " rows: time / openpyxl", "change/" + rows,
                 "openpyxl change/" + rows);
    compareAtEnd("MODIFYSHEET, " + rows + " rows: memory / openpyxl", "change memory/" + rows,
                 "openpyxl change memory/" + rows);
    compareAtEnd("MODIFYSHEET: time, " + rows + " / 3,300 rows", "change/" + rows, "change/3300");
    return true;
}();

}  // namespace

}  // namespace vexa::bench
