#include "backend/strings/table_dictionary.h"

#include "backend/strings/string_table.h"
#include "backend/strings/string_table_cache.h"
#include "backend/text/character_set.h"

namespace vexa {

FacSTDictionary::FacSTDictionary(std::string_view location) : location_(toUtf8(location)) {
    const bool ended = location_.empty() || location_.back() == '\\' || location_.back() == '/';
    if (!ended) {
        location_.push_back('\\');
    }
}

void FacSTDictionary::SetProcedure(std::string_view procedure) {
    table_.reset();
    const std::string_view file = stringTableFile(procedure);
    if (!file.empty()) {
        table_ = loadForDictionary(location_ + std::string(file));
    }
}

std::string FacSTDictionary::LookUp(std::string_view key) const {
    if (table_ == nullptr) {
        return std::string(key);
    }
    const auto found = table_->positions.find(toUtf8(key));
    const std::string* const text =
        found == table_->positions.end() ? nullptr : &table_->entries[found->second].value;
    return text == nullptr || text->empty() ? std::string(key) : fromUtf8(*text);
}

}  // namespace vexa
