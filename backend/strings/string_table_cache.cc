#include "backend/strings/string_table_cache.h"

#include "backend/strings/xliff_reader.h"

namespace vexa {

namespace {

using Cache = std::map<std::string, std::shared_ptr<const LoadedStringTable>>;

Cache& cache() {
    static Cache tables;
    return tables;
}

std::shared_ptr<const LoadedStringTable> read(const std::string& path) {
    auto table = std::make_shared<LoadedStringTable>();
    std::string bytes;
    table->result = FileSystem::current().read(path, bytes, FacSTStringTable::kLimit);
    if (table->result) {
        table->result = readXliff(bytes, table->entries);
    }
    for (std::size_t i = 0; i < table->entries.size(); ++i) {
        table->positions.insert_or_assign(table->entries[i].key, i);
    }
    return table;
}

}  // namespace

std::shared_ptr<const LoadedStringTable> loadStringTable(const std::string& path) {
    // One file is one table, whichever separators its path is written with.
    auto& table = cache()[toBackslashPath(path)];
    if (table == nullptr) {
        table = read(path);
    }
    return table;
}

void clearStringTableCache() { cache().clear(); }

}  // namespace vexa
