// What the entries of one document file share while they are written or read.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "backend/tables/model/table_look.h"
#include "frontend/document/item.h"
#include "frontend/store/memory_budget.h"

namespace vexa::frontend {

using SharedLook = std::shared_ptr<const tables::TableLook>;

/// The entry of a look.
struct LookEntry {
    std::string xml;
    bool isSource = false;  ///< the look came as this text

    bool operator==(const LookEntry&) const = default;
    bool operator<(const LookEntry& other) const {
        return std::tie(xml, isSource) < std::tie(other.xml, other.isSource);
    }
};

/// The looks of a document in the order of their entries, each once. The plain look has no entry.
class LookNumbers {
  public:
    /// Finds a look, or adds it.
    void add(const SharedLook& look);
    /// The number of a look that was added, from 1; 0 for the plain one.
    [[nodiscard]] std::size_t numberOf(const SharedLook& look) const { return numbers_.at(look.get()); }
    [[nodiscard]] const std::vector<LookEntry>& entries() const { return entries_; }

  private:
    std::map<const tables::TableLook*, std::size_t> numbers_;
    std::map<LookEntry, std::size_t> byText_;
    std::vector<LookEntry> entries_;
};

/// While one entry is written.
struct WritingContext {
    const LookNumbers& looks;
    std::uint64_t memory = 0;  ///< that opening will keep, beyond `memoryOfItem`
};

/// While one entry is read.
struct ReadingContext {
    const std::vector<SharedLook>& looks;
    MemoryBudget& budget;
    std::shared_ptr<Picture> picture;  ///< of a chart or tree: its bytes and form, for the item to take
    bool isTooLarge = false;           ///< the budget was not enough

    [[nodiscard]] bool keep(std::uint64_t bytes) {
        isTooLarge = !budget.keep(bytes) || isTooLarge;
        return !isTooLarge;
    }
};

}  // namespace vexa::frontend
