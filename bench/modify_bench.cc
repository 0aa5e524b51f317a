// The request of OUTPUT MODIFY: built from commands of 10 to 100,000 selection groups, and the escape of its
// texts alone, beside a loop over a table and a plain copy of the same bytes.
//
// The road: a syntax file is cut into its one command, which is cut into tokens, parsed, read and written as
// XML, which an adapter takes at once.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "backend/adapter/client_adapter.h"
#include "backend/session/session.h"
#include "backend/text/character_set.h"
#include "bench/measure.h"
#include "bench/process_memory.h"
#include "bench/ratios.h"
#include "module/frame/xml_text.h"

namespace vexa::bench {

namespace {

/// What one command holds again and again.
constexpr std::string_view kGroups[] = {
    R"(  /SELECT TABLES
  /IF COMMANDS=['Averages(1,2)' 'Counts'] SUBTYPES=['Report'] LABELS=[BEGINS('Mean values')]
  /TABLE TABLETITLE='Means & medians of )DATE' TABLESUMMARY='Values by region' TRANSPOSE=YES
    SORT=(COLLABEL='Region') SORTDIRECTION=ASCENDING
  /TABLECELLS SELECT=['Total' BODY] SELECTDIMENSION=ROWS STYLE=BOLD TEXTCOLOR=BLUE APPLYTO=ROW
  /TABLECELLS SELECT=[SIGNIFICANCE] SELECTCONDITION='x<=0.05' BACKGROUNDCOLOR=RGB(255 255 0)
    FORMAT='F10.3' FONT='Sans' FONTSIZE=11
)",
    R"(  /SELECT TEXTS HEADINGS
  /IF LABELS=[EXACT('Title') CONTAINS('of the study')] INSTANCES=[1 3 LAST]
  /TEXTS TEXT='Results of the study, second edition' FONT='Sans' FONTSIZE=12 STYLE=BOLD ITALIC
  /OBJECTPROPERTIES VISIBLE=YES OUTLINELABEL='Results'
)",
    R"(  /SELECT ALL EXCEPT=[LOGS WARNINGS]
  /IF COMMANDS=['Summary(LAST)'] VISIBLEONLY=YES
  /INDEXING INDEXTYPE=NUMBER INDEXSTART=1
  /OBJECTPROPERTIES VISIBLE=ASIS SIZE=POINTS(300 200)
)",
    R"(  /SELECT CHARTS
  /IF COMMANDS=['Counts'] SUBTYPES=['Bars']
  /OBJECTPROPERTIES VISIBLE=NO OUTLINELABEL='Counts of "both" groups' SIZE=PERCENT(50 75)
)",
    R"(  /SELECT LOGS
  /DELETEOBJECT
)",
};

std::string modifyCommand(std::int64_t groups) {
    std::string text = "OUTPUT MODIFY NAME='march'\n";
    for (std::int64_t i = 0; i < groups; ++i) {
        text += kGroups[static_cast<std::size_t>(i) % std::size(kGroups)];
    }
    return text + "  /REPORT PRINTREPORT=NO.\n";
}

/// Takes every request at once and says that all went well.
class TakingAdapter : public ClientAdapter {
  public:
    bool isLocalMode() override { return true; }
    OutputController* outputController() override { return nullptr; }
    std::string exchangeExport(const std::string& /*specification*/) override { return {}; }
    std::string exchangeModify(const std::string& request) override {
        benchmark::DoNotOptimize(request.data());
        requestSize = request.size();
        ++requests;
        return "(1,1,0)";
    }

    std::size_t requestSize = 0;
    std::size_t requests = 0;
};

/// The whole road for one syntax file after another.
class ModifyRun {
  public:
    ModifyRun() { installAdapter(&adapter); }
    ~ModifyRun() { installAdapter(nullptr); }
    ModifyRun(const ModifyRun&) = delete;
    ModifyRun& operator=(const ModifyRun&) = delete;

    [[nodiscard]] bool run(std::string text) {
        const std::size_t before = adapter.requests;
        session.runText(std::move(text), "bench.vxs");
        return adapter.requests == before + 1 && !session.hadErrors();
    }

    TakingAdapter adapter;

  private:
    LibraryModule module_{VEXA_MODULE_FILE};
    Session session{module_};
};

void modifyRequest(benchmark::State& state) {
    const std::string text = modifyCommand(state.range(0));
    ModifyRun road;
    bool built = road.run(text);
    const double start = processorTime();
    for (auto _ : state) {
        built = road.run(text) && built;
    }
    const double perCommand = (processorTime() - start) / static_cast<double>(state.iterations());
    if (!built) {
        state.SkipWithError("a command did not become a request");
        return;
    }
    const auto size = static_cast<double>(road.adapter.requestSize);
    const std::string key = "modify/" + std::to_string(state.range(0));
    state.counters["request MB/s"] = size * 1e3 / perCommand;
    state.counters["request bytes"] = size;
    remember(key + " group", perCommand / static_cast<double>(state.range(0)));
    remember(key + " request", size / 1024);
    remember(key + " command", static_cast<double>(text.size()) / 1024);
    remember(key + " memory",
             static_cast<double>(peakMemoryOf("modify", {std::to_string(state.range(0))})) / 1024);
}

/// What the work "modify" finds ready: the module, loaded and used once, and the text.
struct LoneModify {
    ModifyRun road;
    std::string text;
};

LoneModify& loneModify() {
    static LoneModify lone;
    return lone;
}

void require(bool ok) {
    if (!ok) {
        std::abort();
    }
}

void registerRequests() {
    registerLoneWork(
        "modify", {[](const Arguments& given) {
                       require(loneModify().road.run(modifyCommand(10)));
                       loneModify().text = modifyCommand(std::stoll(given[0]));
                   },
                   [](const Arguments&) { require(loneModify().road.run(std::move(loneModify().text))); }});
    for (const std::int64_t count : {10, 1'000, 100'000}) {
        benchmark::RegisterBenchmark("ModifyRequest", modifyRequest)
            ->Arg(count)
            ->Unit(benchmark::kMillisecond);
    }
    compareAtEnd("ns per selection group, 1,000 / 10 groups", "modify/1000 group", "modify/10 group");
    compareAtEnd("ns per selection group, 100,000 / 10 groups", "modify/100000 group", "modify/10 group");
    for (const std::string count : {"1000", "100000"}) {
        compareAtEnd(count + " groups: KiB at the peak / request", "modify/" + count + " memory",
                     "modify/" + count + " request");
        compareAtEnd(count + " groups: KiB at the peak / command", "modify/" + count + " memory",
                     "modify/" + count + " command");
    }
}

/// What a byte means to the loop over a table.
struct ByteAction {
    std::array<char, 8> text{};  ///< what is written, its first `length` bytes
    std::uint8_t length = 1;     ///< 0: the byte leads a character of two, which is copied
};

using ByteTable = std::array<ByteAction, 256>;

ByteTable makeByteTable(bool shiftJis) {
    ByteTable table;
    for (std::size_t byte = 0; byte < table.size(); ++byte) {
        const bool leads = shiftJis && ((byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC));
        table[byte] = {{static_cast<char>(byte)}, static_cast<std::uint8_t>(leads ? 0 : 1)};
    }
    table['"'] = {{'&', 'q', 'u', 'o', 't', ';'}, 6};
    table['&'] = {{'&', 'a', 'm', 'p', ';'}, 5};
    table['\''] = {{'&', 'a', 'p', 'o', 's', ';'}, 6};
    table['<'] = {{'&', 'l', 't', ';'}, 4};
    table['>'] = {{'&', 'g', 't', ';'}, 4};
    return table;
}

/// The peer: looks up every character in a table, writes into room for the longest outcome.
std::string escapeByTable(const ByteTable& table, std::string_view text, std::vector<char>& room) {
    room.resize(text.size() * 6 + sizeof(ByteAction));
    char* to = room.data();
    for (std::size_t at = 0; at < text.size(); ++at) {
        const ByteAction& action = table[static_cast<unsigned char>(text[at])];
        if (action.length == 0 && at + 1 < text.size()) {
            *to++ = text[at++];
            *to++ = text[at];
        } else {
            std::memcpy(to, action.text.data(), action.text.size());
            to += std::max<std::uint8_t>(action.length, 1);
        }
    }
    return {room.data(), to};
}

/// One text to escape. The distance between special characters is only on average what it says.
struct EscapeCase {
    std::string name;
    bool shiftJis;
    std::uint32_t distance;  ///< 0: no special characters
    std::size_t size;
};

std::string makeText(const EscapeCase& wanted) {
    constexpr std::string_view kSpecials = "\"&'<>";
    // Three bytes of UTF-8, or two of Shift_JIS of which the second is an ASCII letter.
    const std::string_view wide = wanted.shiftJis ? "\x83\x41" : "\xE3\x82\xA2";
    std::string text;
    std::uint32_t random = 1;
    while (text.size() + wide.size() <= wanted.size) {
        random = random * 1664525U + 1013904223U;
        const std::uint32_t drawn = random >> 8;
        if (wanted.distance != 0 && drawn % wanted.distance == 0) {
            text += kSpecials[drawn / wanted.distance % kSpecials.size()];
        } else if (drawn % 8 == 7) {
            text += wide;
        } else {
            text += static_cast<char>('a' + drawn % 23);
        }
    }
    text.resize(wanted.size, ' ');
    return text;
}

/// Calls `work` for every round and remembers how long it takes.
template <typename Work>
void measureEscape(benchmark::State& state, const std::string& name, std::size_t size, Work work) {
    const double start = processorTime();
    for (auto _ : state) {
        work();
    }
    const double perRound = (processorTime() - start) / static_cast<double>(state.iterations());
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size));
    remember(name, perRound);
}

/// Installs the character set of a case for as long as the object lives.
class CaseCharacterSet {
  public:
    explicit CaseCharacterSet(const EscapeCase& wanted) {
        installCharacterSet(wanted.shiftJis ? CharacterSet::find("Shift_JIS") : nullptr);
    }
    ~CaseCharacterSet() { installCharacterSet(nullptr); }
    CaseCharacterSet(const CaseCharacterSet&) = delete;
    CaseCharacterSet& operator=(const CaseCharacterSet&) = delete;
};

void registerEscape(const EscapeCase& wanted) {
    const std::string key = wanted.name;
    benchmark::RegisterBenchmark(("Escape/" + key).c_str(), [=](benchmark::State& state) {
        const CaseCharacterSet set(wanted);
        const std::string text = makeText(wanted);
        std::vector<char> room;
        if (escapeXml(text) != escapeByTable(makeByteTable(wanted.shiftJis), text, room)) {
            state.SkipWithError("the two escapes differ");
        }
        measureEscape(state, key + " escape", text.size(),
                      [&] { benchmark::DoNotOptimize(escapeXml(text).data()); });
    });
    benchmark::RegisterBenchmark(("EscapeByTable/" + key).c_str(), [=](benchmark::State& state) {
        const std::string text = makeText(wanted);
        const ByteTable table = makeByteTable(wanted.shiftJis);
        std::vector<char> room;
        measureEscape(state, key + " table", text.size(),
                      [&] { benchmark::DoNotOptimize(escapeByTable(table, text, room).data()); });
    });
    benchmark::RegisterBenchmark(("CopyString/" + key).c_str(), [=](benchmark::State& state) {
        const std::string text = makeText(wanted);
        measureEscape(state, key + " string", text.size(),
                      [&] { benchmark::DoNotOptimize(std::string(text).data()); });
    });
    benchmark::RegisterBenchmark(("Memcpy/" + key).c_str(), [=](benchmark::State& state) {
        const std::string text = makeText(wanted);
        std::vector<char> copy(text.size());
        measureEscape(state, key + " memcpy", text.size(), [&] {
            std::memcpy(copy.data(), text.data(), text.size());
            benchmark::ClobberMemory();
        });
    });
    for (const char* const peer : {"table", "string", "memcpy"}) {
        compareAtEnd("ns, " + key + ": escape / " + peer, key + " escape", key + " " + peer);
    }
}

[[maybe_unused]] const bool registered = [] {
    registerRequests();
    const std::pair<const char*, std::uint32_t> kinds[] = {{"none", 0}, {"few", 200}, {"many", 8}};
    for (const bool shiftJis : {false, true}) {
        for (const auto& [kind, distance] : kinds) {
            for (const std::size_t size : {64U, 1024U, 32U * 1024, 1024U * 1024}) {
                registerEscape(
                    {(shiftJis ? "Shift_JIS " : "UTF-8 ") + std::string(kind) + " " + std::to_string(size),
                     shiftJis, distance, size});
            }
        }
    }
    return true;
}();

}  // namespace

}  // namespace vexa::bench
