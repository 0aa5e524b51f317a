#include "backend/strings/string_table.h"

#include <functional>
#include <set>
#include <utility>

#include "backend/strings/dictionary.h"
#include "backend/strings/string_table_cache.h"
#include "backend/text/character_set.h"

namespace vexa {

namespace {

struct ProcedureFile {
    std::string_view procedure;
    std::string_view file;
};

constexpr ProcedureFile kFiles[] = {
    {"Output Activate", "outactiv8.xlf"}, {"Output Close", "outclose.xlf"},
    {"Output Comment", "outcomnt.xlf"},   {"Output Display", "outdisp.xlf"},
    {"Output Export", "outexport.xlf"},   {"Output Modify", "outmodify.xlf"},
    {"Output Name", "outname.xlf"},       {"Output New", "outnew.xlf"},
    {"Output Open", "outopen.xlf"},       {"Output Save", "outsave.xlf"},
    {"Stb Print", "stbprint.xlf"},
};

/// A complaint whose reason is not translated yet: to look that up may bring further complaints.
struct PendingComplaint {
    std::string path;
    FileResult result;
    bool missing;
};

/// What was complained about since the complaints were last taken.
struct Complaints {
    std::vector<PendingComplaint> list;
    std::set<std::string, std::less<>> paths;
};

Complaints& complaints() {
    static Complaints pending;
    return pending;
}

/// The broken files that dictionaries have complained of.
std::set<std::string, std::less<>>& brokenForDictionaries() {
    static std::set<std::string, std::less<>> paths;
    return paths;
}

void complain(const std::string& path, const FileResult& result, bool missing) {
    if (complaints().paths.insert(path).second) {
        complaints().list.push_back({path, result, missing});
    }
}

}  // namespace

FileResult FacSTStringTable::GetKeysAndValues(std::string_view path,
                                              std::vector<keyValueGloss>& entries) const {
    entries.clear();
    const std::string file = toUtf8(path);
    const auto table = loadStringTable(file);
    if (!table->result) {
        complain(file, table->result, !FileSystem::current().isFile(file));
    }
    entries.reserve(table->entries.size());
    for (const keyValueGloss& entry : table->entries) {
        entries.push_back({fromUtf8(entry.key), fromUtf8(entry.value), fromUtf8(entry.gloss)});
    }
    return table->result;
}

std::shared_ptr<const LoadedStringTable> loadForDictionary(const std::string& path) {
    auto table = loadStringTable(path);
    if (!table->result && FileSystem::current().isFile(path) && brokenForDictionaries().insert(path).second) {
        complain(toBackslashPath(path), table->result, false);
    }
    return table;
}

std::vector<StringTableComplaint> takeStringTableComplaints() {
    std::vector<StringTableComplaint> taken;
    for (const PendingComplaint& each : std::exchange(complaints(), {}).list) {
        taken.push_back({each.path, each.missing ? std::string() : shownReason(each.result)});
    }
    return taken;
}

void forgetStringTables() {
    clearStringTableCache();
    brokenForDictionaries().clear();
}

std::string_view stringTableFile(std::string_view procedure) {
    for (const ProcedureFile& entry : kFiles) {
        if (entry.procedure == procedure) {
            return entry.file;
        }
    }
    return {};
}

}  // namespace vexa
