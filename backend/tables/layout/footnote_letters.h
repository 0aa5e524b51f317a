// Letters of footnotes, given in the order in which a grid refers to them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "backend/tables/model/table.h"

namespace vexa::tables {

class FootnoteLetters {
  public:
    explicit FootnoteLetters(std::size_t footnotes) : numbers_(footnotes, unlettered) {}

    /// The letters of a footnote, which gets the next ones when it has none yet.
    [[nodiscard]] std::string of(FootnoteId id);
    [[nodiscard]] bool has(FootnoteId id) const { return numbers_[id] != unlettered; }

  private:
    static constexpr std::uint32_t unlettered = UINT32_MAX;
    std::vector<std::uint32_t> numbers_;
    std::uint32_t next_ = 0;
};

/// The footnotes of a table that no cell and no category refers to.
[[nodiscard]] std::vector<FootnoteId> unmarkedFootnotes(const TableData& data);

/// " [a,b]", or nothing without marks.
[[nodiscard]] std::string bracketedMarks(const std::vector<std::string>& marks);

}  // namespace vexa::tables
