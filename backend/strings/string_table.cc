#include "backend/strings/string_table.h"

#include <functional>
#include <set>
#include <utility>

#include "backend/platform/character_set.h"
#include "backend/strings/dictionary.h"
#include "backend/strings/string_table_cache.h"

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

/// What was complained about since the complaints were last taken.
struct Complaints {
    std::vector<StringTableComplaint> list;
    std::set<std::string, std::less<>> paths;
};

Complaints& complaints() {
    static Complaints pending;
    return pending;
}

void complain(const std::string& path, const FileResult& result) {
    if (!complaints().paths.insert(path).second) return;
    complaints().list.push_back(
        {path, FileSystem::current().isFile(path) ? shownReason(result) : std::string()});
}

}  // namespace

FileResult FacSTStringTable::GetKeysAndValues(std::string_view path,
                                              std::vector<keyValueGloss>& entries) const {
    entries.clear();
    const std::string file = toUtf8(path);
    const auto table = loadStringTable(file);
    if (!table->result) complain(file, table->result);
    entries.reserve(table->entries.size());
    for (const keyValueGloss& entry : table->entries) {
        entries.push_back({fromUtf8(entry.key), fromUtf8(entry.value), fromUtf8(entry.gloss)});
    }
    return table->result;
}

std::vector<StringTableComplaint> takeStringTableComplaints() { return std::exchange(complaints(), {}).list; }

std::string_view stringTableFile(std::string_view procedure) {
    for (const ProcedureFile& entry : kFiles) {
        if (entry.procedure == procedure) return entry.file;
    }
    return {};
}

}  // namespace vexa
