// Document commands over the whole road, beside the preparation of SQL statements of the same length.
//
// The road: a syntax file is cut into commands, each is cut into tokens, parsed, checked and made into a
// request, which an adapter answers at once. The peer parses a statement and makes a program for it; neither
// executes anything.

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <string>

#include "backend/adapter/client_adapter.h"
#include "backend/session/session.h"
#include "bench/measure.h"
#include "bench/ratios.h"

namespace vexa::bench {

namespace {

constexpr const char* kCommand =
    "OUTPUT SAVE OUTFILE='C:\\reports\\' + 'march.vxv' NAME=march TYPE=VXV LOCK=YES STOREMODEL=NO\n"
    "  /PASSPROTECT PASSWORD='secret' ENCRYPTEDPW=NO.\n";
constexpr double kCommandTokens = 28;  // the command's name counts two, its period one

constexpr const char* kStatement =
    "SELECT name, kind, size FROM item WHERE kind = 'table' AND size > 10 AND name <> 'a' OR hidden = 0 "
    "ORDER BY name, size;";
constexpr double kStatementTokens = 30;

class InstantController : public OutputController {
  public:
    bool Send(const VexawMsgOutputControllerRequest& request,
              VexawMsgOutputControllerResponse& /*response*/) override {
        benchmark::DoNotOptimize(request.sequence());
        ++requests;
        return true;
    }

    std::size_t requests = 0;
};

class InstantAdapter : public ClientAdapter {
  public:
    bool isLocalMode() override { return false; }
    OutputController* outputController() override { return &controller; }
    std::string exchangeExport(const std::string& /*specification*/) override { return {}; }
    std::string exchangeModify(const std::string& /*request*/) override { return {}; }

    InstantController controller;
};

std::string repeated(const char* command, std::int64_t count) {
    std::string text;
    for (std::int64_t i = 0; i < count; ++i) {
        text += command;
    }
    return text;
}

void report(benchmark::State& state, const std::string& name, double start, double tokens) {
    const double commands = static_cast<double>(state.iterations()) * static_cast<double>(state.range(0));
    const double perToken = (processorTime() - start) / (commands * tokens);
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["ns/token"] = perToken;
    remember(name + "/" + std::to_string(state.range(0)), perToken);
}

void documentCommands(benchmark::State& state) {
    const std::string text = repeated(kCommand, state.range(0));
    InstantAdapter adapter;
    installAdapter(&adapter);
    LibraryModule module(VEXA_MODULE_FILE);
    Session session(module);
    const double start = processorTime();
    for (auto _ : state) {
        session.runText(text, "bench.vxs");
    }
    report(state, "commands", start, kCommandTokens);
    if (session.hadErrors() ||
        adapter.controller.requests != static_cast<std::size_t>(state.iterations() * state.range(0))) {
        state.SkipWithError("not every command became a request");
    }
    installAdapter(nullptr);
}

void sqlStatements(benchmark::State& state) {
    sqlite3* database = nullptr;
    sqlite3_open(":memory:", &database);
    sqlite3_exec(database, "CREATE TABLE item (name TEXT, kind TEXT, size INTEGER, hidden INTEGER)", nullptr,
                 nullptr, nullptr);
    const double start = processorTime();
    for (auto _ : state) {
        for (std::int64_t i = 0; i < state.range(0); ++i) {
            sqlite3_stmt* statement = nullptr;
            sqlite3_prepare_v2(database, kStatement, -1, &statement, nullptr);
            sqlite3_finalize(statement);
        }
    }
    report(state, "sqlite", start, kStatementTokens);
    sqlite3_close(database);
}

[[maybe_unused]] const bool registered = [] {
    for (const std::int64_t count : {2'000, 20'000, 200'000}) {
        benchmark::RegisterBenchmark("DocumentCommands", documentCommands)
            ->Arg(count)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark("SqlitePrepareFinalize", sqlStatements)
            ->Arg(count)
            ->Unit(benchmark::kMillisecond);
        const std::string n = "/" + std::to_string(count);
        compareAtEnd("ns per token, " + std::to_string(count) + " commands / SQL statements", "commands" + n,
                     "sqlite" + n);
    }
    compareAtEnd("ns per token, 200,000 commands / 2,000 commands", "commands/200000", "commands/2000");
    return true;
}();

}  // namespace

}  // namespace vexa::bench
