// The string tables of the installation: opening them, looking texts up, and handing whole tables over.
//
// Reading stands beside a bare parse of the same bytes by the XML library, which does nothing with what it
// reads. Looking up stands beside gettext of the C library with catalogues of the same texts, asked one after
// the other as our tables are.

#include <benchmark/benchmark.h>
#include <libintl.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>

#include "backend/strings/dictionary.h"
#include "backend/strings/string_table.h"
#include "backend/strings/table_dictionary.h"
#include "backend/viewerxml/xml_platform.h"
#include "bench/measure.h"
#include "bench/message_catalog.h"
#include "bench/ratios.h"

namespace vexa::bench {

namespace {

namespace xml = xercesc;

const std::string kGerman = VEXA_INSTALLATION "/lang/de/";
constexpr const char* kProcedure = "Output Modify";
constexpr const char* kMissing = "No table has this text, and it is as long as others.";

/// The tables that a text is looked for in under OUTPUT MODIFY, in their order.
constexpr std::array kTables = {"outmodify", "outframe", "synparse", "session", "pivotlog",
                                "viewxml",   "platform", "outctrl",  "vexaprog"};

std::string fileOf(std::string_view table) { return kGerman + std::string(table) + ".xlf"; }

std::string bytesOf(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<keyValueGloss> entriesOf(const std::string& file) {
    std::vector<keyValueGloss> entries;
    static_cast<void>(FacSTStringTable().GetKeysAndValues(file, entries));
    return entries;
}

/// Has the XML library go through `bytes` and does nothing with what it finds; false for what is not XML.
bool parseOnly(const std::string& bytes) {
    const std::unique_ptr<xml::SAX2XMLReader> reader(xml::XMLReaderFactory::createXMLReader());
    reader->setFeature(xml::XMLUni::fgSAX2CoreValidation, false);
    reader->setFeature(xml::XMLUni::fgXercesSchema, false);
    xml::DefaultHandler nothing;
    reader->setContentHandler(&nothing);
    reader->setErrorHandler(&nothing);
    const auto* const first = reinterpret_cast<const XMLByte*>(bytes.data());
    reader->parse(xml::MemBufInputSource(first, bytes.size(), "bench"));
    return reader->getErrorCount() == 0;
}

void parseFiles(benchmark::State& state, const std::string& name, std::int64_t pieces,
                const std::vector<std::string>& files) {
    const XmlPlatform held;
    std::vector<std::string> contents;
    for (const std::string& file : files) {
        contents.push_back(bytesOf(file));
    }
    bool parsed = true;
    measure(state, name, pieces, [&] {
        for (const std::string& bytes : contents) {
            parsed = parseOnly(bytes) && parsed;
        }
    });
    if (!parsed) {
        state.SkipWithError("a table is no XML");
    }
}

/// What a date costs: a dictionary opened for the name of one month.
void openDictionary(benchmark::State& state, const std::string& name, bool forget) {
    std::string month;
    measure(state, name, 1, [&] {
        if (forget) {
            forgetStringTables();
        }
        FacSTDictionary dictionary(kGerman);
        dictionary.SetProcedure(kProcedure);
        month = dictionary.LookUp("TFOMarch");
    });
    if (month != "M\u00e4rz") {
        state.SkipWithError("the table has no month");
    }
}

/// What the first text costs that only the last table could have.
void openAll(benchmark::State& state) {
    std::string text;
    measure(state, "all tables", 1, [&] {
        forgetStringTables();
        StringDictionary dictionary;
        dictionary.open(kGerman);
        dictionary.setProcedure(kProcedure);
        text = dictionary.lookUp(kMissing);
    });
    if (text != kMissing || entriesOf(fileOf(kTables.back())).empty()) {
        state.SkipWithError("the tables are not there");
    }
}

void parseAll(benchmark::State& state) {
    std::vector<std::string> files;
    for (const char* const table : kTables) {
        if (std::filesystem::exists(fileOf(table))) {
            files.push_back(fileOf(table));
        }
    }
    parseFiles(state, "all tables parsed", 1, files);
}

/// Keys, and what is shown for each.
struct Questions {
    std::vector<std::string> keys;
    std::vector<std::string> texts;
};

/// The texts that the table of the number `wanted` has and none before it.
Questions questionsFrom(std::size_t wanted) {
    Questions questions;
    std::set<std::string> earlier;
    for (std::size_t i = 0; i <= wanted; ++i) {
        for (const keyValueGloss& entry : entriesOf(fileOf(kTables.at(i)))) {
            const bool isNew = earlier.insert(entry.key).second;
            if (i == wanted && isNew) {
                questions.keys.push_back(entry.key);
                questions.texts.push_back(entry.value);
            }
        }
    }
    return questions;
}

Questions questionsWithoutAnswer() {
    Questions questions;
    for (const keyValueGloss& entry : entriesOf(fileOf(kTables.front()))) {
        questions.keys.push_back("Nothing " + entry.key);
    }
    questions.texts = questions.keys;
    return questions;
}

void lookUp(benchmark::State& state, const std::string& name, const Questions& questions) {
    StringDictionary dictionary;
    dictionary.open(kGerman);
    dictionary.setProcedure(kProcedure);
    for (std::size_t i = 0; i < questions.keys.size(); ++i) {
        if (dictionary.lookUp(questions.keys[i]) != questions.texts[i]) {
            state.SkipWithError("a text is not the table's");
            return;
        }
    }
    measure(state, name, static_cast<std::int64_t>(questions.keys.size()), [&] {
        for (const std::string& key : questions.keys) {
            benchmark::DoNotOptimize(dictionary.lookUp(key).data());
        }
    });
}

/// The tables as catalogues of gettext, each under its name.
class Catalogs {
  public:
    Catalogs() {
        usable_ = chooseCatalogs("de");
        for (const char* const table : kTables) {
            const std::string file = folder_.path() + "/de/LC_MESSAGES/" + table + ".mo";
            usable_ = writeCatalog(file, entriesOf(fileOf(table))) && usable_;
            usable_ = bindtextdomain(table, folder_.path().c_str()) != nullptr && usable_;
        }
    }

    [[nodiscard]] bool usable() const { return usable_; }

    /// What gettext gives back for a text that a catalogue lacks is the very pointer to the key.
    static const char* lookUp(const char* key) {
        for (const char* const table : kTables) {
            const char* const text = dgettext(table, key);
            if (text != key) {
                return text;
            }
        }
        return key;
    }

  private:
    ScratchFolder folder_;
    bool usable_ = false;
};

void lookUpByGettext(benchmark::State& state, const std::string& name, const Questions& questions) {
    static const Catalogs catalogs;
    bool same = catalogs.usable();
    for (std::size_t i = 0; i < questions.keys.size() && same; ++i) {
        same = Catalogs::lookUp(questions.keys[i].c_str()) == questions.texts[i];
    }
    if (!same) {
        state.SkipWithError("gettext does not give the same text");
        return;
    }
    measure(state, name, static_cast<std::int64_t>(questions.keys.size()), [&] {
        for (const std::string& key : questions.keys) {
            benchmark::DoNotOptimize(Catalogs::lookUp(key.c_str()));
        }
    });
}

/// A table of `units` texts, each with a help text.
void writeTable(const std::string& file, std::int64_t units) {
    std::ofstream out(file);
    out << "<xliff version=\"1.2\" xmlns=\"urn:oasis:names:tc:xliff:document:1.2\">\n"
           "<file original=\"bench\" source-language=\"en\" target-language=\"de\" datatype=\"plaintext\">"
           "<body>\n";
    for (std::int64_t i = 0; i < units; ++i) {
        const std::string number = std::to_string(i);
        out << "<trans-unit id=\"mean " << number << "\"><source>Mean " << number
            << "</source><target>Mittelwert " << number << "</target><note>Hilfe " << number
            << "</note></trans-unit>\n";
    }
    out << "</body></file></xliff>\n";
}

void handOver(benchmark::State& state, const std::string& name, bool forget) {
    const ScratchFolder folder;
    const std::string file = folder / "bench.xlf";
    writeTable(file, state.range(0));
    std::vector<keyValueGloss> entries;
    measure(state, name + std::to_string(state.range(0)), state.range(0), [&] {
        if (forget) {
            forgetStringTables();
        }
        static_cast<void>(FacSTStringTable().GetKeysAndValues(file, entries));
    });
    if (static_cast<std::int64_t>(entries.size()) != state.range(0)) {
        state.SkipWithError("the table was not read");
    }
}

void parseTable(benchmark::State& state) {
    const ScratchFolder folder;
    const std::string file = folder / "bench.xlf";
    writeTable(file, state.range(0));
    parseFiles(state, "entry parsed/" + std::to_string(state.range(0)), state.range(0), {file});
}

void registerOpening() {
    benchmark::RegisterBenchmark("DictionaryFirst", openDictionary, "dictionary first", true);
    benchmark::RegisterBenchmark("DictionaryAgain", openDictionary, "dictionary again", false);
    benchmark::RegisterBenchmark("DictionaryParsedOnly", parseFiles, "dictionary parsed", 1,
                                 std::vector{fileOf(kTables.front())});
    benchmark::RegisterBenchmark("AllTablesFirst", openAll);
    benchmark::RegisterBenchmark("AllTablesParsedOnly", parseAll);
    compareAtEnd("ns, a dictionary opened first / bare parse", "dictionary first", "dictionary parsed");
    compareAtEnd("ns, a dictionary opened again / first", "dictionary again", "dictionary first");
    compareAtEnd("ns, all tables of a command first / bare parse", "all tables", "all tables parsed");
}

void registerLookUp(const std::string& kind, const std::function<Questions()>& questions) {
    const std::string ours = "look up " + kind;
    const std::string peer = "gettext " + kind;
    benchmark::RegisterBenchmark(("LookUp/" + kind).c_str(), [ours, questions](benchmark::State& state) {
        lookUp(state, ours, questions());
    });
    benchmark::RegisterBenchmark(("Gettext/" + kind).c_str(), [peer, questions](benchmark::State& state) {
        lookUpByGettext(state, peer, questions());
    });
    compareAtEnd("ns per text " + kind + ": look-up / gettext", ours, peer);
}

void registerEntries() {
    for (const std::int64_t units : {10, 1'000, 20'000}) {
        benchmark::RegisterBenchmark("EntriesFirst", handOver, "entry first/", true)->Arg(units);
        benchmark::RegisterBenchmark("EntriesAgain", handOver, "entry again/", false)->Arg(units);
        benchmark::RegisterBenchmark("EntriesParsedOnly", parseTable)->Arg(units);
        const std::string n = std::to_string(units);
        compareAtEnd("ns per entry, " + n + " entries: first / bare parse", "entry first/" + n,
                     "entry parsed/" + n);
        compareAtEnd("ns per entry, " + n + " entries: again / first", "entry again/" + n,
                     "entry first/" + n);
    }
    compareAtEnd("ns per entry, first: 20,000 / 1,000 entries", "entry first/20000", "entry first/1000");
    compareAtEnd("ns per entry, again: 20,000 / 1,000 entries", "entry again/20000", "entry again/1000");
}

[[maybe_unused]] const bool registered = [] {
    registerOpening();
    registerLookUp("in the table", [] { return questionsFrom(0); });
    registerLookUp("in the last table", [] { return questionsFrom(kTables.size() - 1); });
    registerLookUp("in no table", questionsWithoutAnswer);
    registerEntries();
    return true;
}();

}  // namespace

}  // namespace vexa::bench
