#include "backend/strings/string_table.h"

#include "backend/platform/character_set.h"
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

}  // namespace

FileResult FacSTStringTable::GetKeysAndValues(std::string_view path,
                                              std::vector<keyValueGloss>& entries) const {
    entries.clear();
    const auto table = loadStringTable(toUtf8(path));
    entries.reserve(table->entries.size());
    for (const keyValueGloss& entry : table->entries) {
        entries.push_back({fromUtf8(entry.key), fromUtf8(entry.value), fromUtf8(entry.gloss)});
    }
    return table->result;
}

std::string_view stringTableFile(std::string_view procedure) {
    for (const ProcedureFile& entry : kFiles) {
        if (entry.procedure == procedure) return entry.file;
    }
    return {};
}

}  // namespace vexa
