#include "frontend/store/entry_context.h"

#include "frontend/looks/look_reader.h"

namespace vexa::frontend {

void LookNumbers::add(const SharedLook& look) {
    if (numbers_.contains(look.get())) return;
    if (look == tables::plainLook() || *look == *tables::plainLook()) {
        numbers_[look.get()] = 0;
        return;
    }
    LookEntry entry{look->source.empty() ? writeLook(*look) : look->source, !look->source.empty()};
    const auto [found, added] = byText_.try_emplace(entry, entries_.size() + 1);
    if (added) entries_.push_back(std::move(entry));
    numbers_[look.get()] = found->second;
}

}  // namespace vexa::frontend
