// Modifications of documents of 100 to 10,000 tables of 40 x 8 numbers: time and memory of a table must not
// depend on their number. Beside a script that makes the same edits on the same tables kept as XML.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <variant>

#include "bench/measure.h"
#include "bench/process_memory.h"
#include "bench/ratios.h"
#include "bench/study_tables.h"
#include "frontend/document/viewer_document.h"
#include "frontend/modify/modification.h"
#include "frontend/requests/modify_request_reader.h"

namespace vexa::bench {

namespace {

using namespace frontend;

Outline studyOf(std::int64_t count) {
    Outline outline;
    for (std::int64_t i = 0; i < count; ++i) {
        Item item;
        item.subtype = "Report";
        item.content = TableContent{studyTable(static_cast<std::size_t>(i))};
        outline.add(std::move(item));
    }
    return outline;
}

std::string requestFor(const std::string& changes) {
    return "<modifyOutputObject documentName=\"*\"><modifyEvent tables=\"true\">" + changes +
           "</modifyEvent></modifyOutputObject>";
}

/// What the script does too: labels, cells, formats, the background of great numbers, the order of rows.
std::string everyEdit() {
    return requestFor(
        "<modifyTable sortPosition=\"3\" ascending=\"false\" format=\"COMMA12.1\"/>"
        "<tableCells headers=\"true\" selectColumns=\"both\" bold=\"true\" textRed=\"0\" textGreen=\"48\" "
        "textBlue=\"96\"/>"
        "<tableCells body=\"true\" selectColumns=\"both\" italic=\"false\"/>"
        "<tableCells body=\"true\" selectColumns=\"both\" selectCondition=\"&gt;=12000\" "
        "backgroundRed=\"255\" backgroundGreen=\"224\" backgroundBlue=\"160\"/>");
}

std::string newLook() {
    return requestFor(
        "<modifyTable><tableLook><tableProperties name=\"bench\"><area name=\"data\" bold=\"true\"/>"
        "</tableProperties></tableLook></modifyTable>");
}

std::string transposition() { return requestFor("<modifyTable transpose=\"true\"/>"); }

class NoLooks : public LookSource {
  public:
    ReadLook find(std::string_view /*name*/) override { return {nullptr, "none"}; }
    [[nodiscard]] bool hasStyleSheet(const std::string& /*name*/) const override { return false; }
};

/// The whole road of a request: reading, planning, putting the outline in its place.
std::size_t modify(ViewerDocument& document, const std::string& text) {
    const auto read = readModifyRequest(text);
    NoLooks looks;
    const PreparedRequest prepared(std::get<ModifyRequest>(read), looks);
    Modification modification = prepared.plan(document.outline());
    const std::size_t modified = modification.modified;
    document.edit(std::move(modification.outline));
    return modified;
}

void modifyAll(benchmark::State& state, const char* name, std::string (*request)()) {
    const Outline outline = studyOf(state.range(0));
    const std::string text = request();
    measure(state, std::string(name) + std::to_string(state.range(0)), state.range(0), [&] {
        ViewerDocument document;
        document.edit(outline);
        if (modify(document, text) != static_cast<std::size_t>(state.range(0)))
            state.SkipWithError("not all tables were modified");
    });
}

/// The script, and what it prints.
void editXml(benchmark::State& state) {
    const std::string count = std::to_string(state.range(0));
    double each = 0;
    double whole = 0;
    for (auto _ : state) {
        const std::string command = "python3 " VEXA_BENCH_FOLDER "/modification_peer.py " + count;
        FILE* const pipe = ::popen(command.c_str(), "r");
        char line[64] = {};
        const bool isRead = pipe != nullptr && std::fgets(line, sizeof line, pipe) != nullptr;
        if (pipe == nullptr || ::pclose(pipe) != 0 || !isRead) {
            state.SkipWithError("the script could not be run");
            return;
        }
        char* rest = nullptr;
        each = std::strtod(line, &rest);
        whole = std::strtod(rest, nullptr);
    }
    state.counters["ns each"] = each;
    state.counters["ns each, read and written"] = whole;
    remember("xml/" + count, each);
    remember("xml file/" + count, whole);
}

/// What the modified tables take beside the old ones, which are kept as an undo would keep them.
void memoryOf(benchmark::State& state) {
    const std::string count = std::to_string(state.range(0));
    double each = 0;
    for (auto _ : state) {
        each = static_cast<double>(peakMemoryOf("modify", {count})) / static_cast<double>(state.range(0));
    }
    state.counters["bytes each"] = each;
    remember("modify memory/" + count, each);
}

[[maybe_unused]] const bool registered = [] {
    registerLoneWork("modify", {[](const Arguments& arguments) {
                                    documentAlone() = std::make_unique<ViewerDocument>();
                                    documentAlone()->edit(studyOf(std::stoll(arguments.at(0))));
                                },
                                [](const Arguments& /*arguments*/) {
                                    benchmark::DoNotOptimize(modify(*documentAlone(), everyEdit()));
                                }});
    const auto add = [](const char* title, const char* name, std::string (*request)()) {
        for (const std::int64_t count : {100, 1000, 10000}) {
            benchmark::RegisterBenchmark(title, modifyAll, name, request)
                ->Arg(count)
                ->Unit(benchmark::kMillisecond);
        }
    };
    add("ModifyTables", "modify/", everyEdit);
    add("RestyleByLook", "look/", newLook);
    add("TransposeTables", "transpose/", transposition);
    benchmark::RegisterBenchmark("EditXml", editXml)->Arg(1000)->Iterations(1)->Unit(benchmark::kMillisecond);
    for (const std::int64_t count : {100, 1000, 10000}) {
        benchmark::RegisterBenchmark("ModifyMemory", memoryOf)->Arg(count)->Iterations(1);
    }
    const std::string tables = "ns per table of 40 x 8, ";
    compareAtEnd(tables + "modified: 10,000 / 100 tables", "modify/10000", "modify/100");
    compareAtEnd(tables + "modified: 1,000 tables / script on XML", "modify/1000", "xml/1000");
    compareAtEnd(tables + "modified: 1,000 / script, XML read and written", "modify/1000", "xml file/1000");
    compareAtEnd(tables + "new look: 10,000 / 100 tables", "look/10000", "look/100");
    compareAtEnd(tables + "transposed: 10,000 / 100 tables", "transpose/10000", "transpose/100");
    compareAtEnd("bytes per modified table: 10,000 / 100 tables", "modify memory/10000", "modify memory/100");
    return true;
}();

}  // namespace

}  // namespace vexa::bench
