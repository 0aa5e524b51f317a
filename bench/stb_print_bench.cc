// STB PRINT of everything, 94 files in twelve languages, over the whole road: the command is cut into tokens
// and parsed, the module reads every table and builds two tables out of each, and the log hands them over,
// with the notes about missing files. A listener only counts them, or makes text for a terminal as well.

#include <benchmark/benchmark.h>

#include <string>
#include <variant>

#include "apps/rendering/table_rendering.h"
#include "backend/paths/path_factory.h"
#include "backend/pivot/output_log.h"
#include "backend/session/session.h"
#include "backend/strings/dictionary.h"
#include "backend/strings/string_table.h"
#include "bench/measure.h"
#include "bench/ratios.h"

namespace vexa::bench {

namespace {

constexpr std::size_t kFiles = 94;
constexpr std::size_t kTerminalWidth = 120;

/// Counts what the command prints, and makes text of it where that is wanted.
class Counter final : public LogListener {
  public:
    explicit Counter(bool rendering) : rendering_(rendering) { OutputLog::current().addListener(*this); }
    ~Counter() override { OutputLog::current().removeListener(*this); }
    Counter(const Counter&) = delete;
    Counter& operator=(const Counter&) = delete;

    void receive(const LogEvent& event) override {
        rendering::RenderOptions options;
        options.width = kTerminalWidth;
        if (const auto* const finished = std::get_if<TableFinished>(&event)) {
            ++tables;
            texts += finished->table->cells.size();
            if (rendering_) {
                bytes += rendering::renderTable(finished->shown, options).size();
            }
        } else if (const auto* const notes = std::get_if<NotesAdded>(&event); notes && rendering_) {
            bytes += rendering::renderNotes(*notes, options).size();
        }
    }

    std::size_t tables = 0;
    std::size_t texts = 0;
    std::size_t bytes = 0;

  private:
    bool rendering_;
};

/// The session of a program whose user sees German.
class PrintRun {
  public:
    PrintRun() {
        installPaths(VEXA_INSTALLATION, "de");
        StringDictionary::current().open(VEXA_INSTALLATION "/lang/de");
    }
    ~PrintRun() { StringDictionary::current().open(""); }
    PrintRun(const PrintRun&) = delete;
    PrintRun& operator=(const PrintRun&) = delete;

    [[nodiscard]] bool run() {
        session_.runText("STB PRINT.\n", "bench.vxs");
        return !session_.hadErrors();
    }

  private:
    LibraryModule module_{VEXA_MODULE_FILE};
    Session session_{module_};
};

/// The number of texts in all tables, 0 when not all files were printed.
std::int64_t textsPrinted(PrintRun& road) {
    const Counter counter(false);
    return road.run() && counter.tables == 2 * kFiles ? static_cast<std::int64_t>(counter.texts) : 0;
}

void printEverything(benchmark::State& state, const std::string& name, bool forget, bool rendering) {
    PrintRun road;
    const std::int64_t texts = textsPrinted(road);
    if (texts == 0) {
        state.SkipWithError("the tables were not printed");
        return;
    }
    Counter counter(rendering);
    measure(state, name, texts, [&] {
        if (forget) {
            forgetStringTables();
        }
        benchmark::DoNotOptimize(road.run());
    });
    const auto rounds = static_cast<double>(state.iterations());
    state.counters["texts"] = static_cast<double>(texts);
    state.counters["KiB"] = static_cast<double>(counter.bytes) / rounds / 1024;
}

[[maybe_unused]] const bool registered = [] {
    constexpr auto kUnit = benchmark::kMillisecond;
    benchmark::RegisterBenchmark("StbPrintFirst", printEverything, "print first", true, false)->Unit(kUnit);
    benchmark::RegisterBenchmark("StbPrintAgain", printEverything, "print again", false, false)->Unit(kUnit);
    benchmark::RegisterBenchmark("StbPrintFirstRendered", printEverything, "print first rendered", true, true)
        ->Unit(kUnit);
    benchmark::RegisterBenchmark("StbPrintAgainRendered", printEverything, "print again rendered", false,
                                 true)
        ->Unit(kUnit);
    compareAtEnd("ns per text, STB PRINT: first / again", "print first", "print again");
    compareAtEnd("ns per text, STB PRINT: first, rendered / not", "print first rendered", "print first");
    compareAtEnd("ns per text, STB PRINT: again, rendered / not", "print again rendered", "print again");
    return true;
}();

}  // namespace

}  // namespace vexa::bench
