// The footnotes of a table: each part has those that it refers to below it.
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "backend/tables/layout/table_grid.h"
#include "frontend/export/pdf/table_painter.h"

namespace vexa::frontend::pdf {

class TableNotes {
  public:
    TableNotes(const tables::TableGrid& grid, TextShaper& shaper, StructureTree& structure, PageFlow& flow);

    /// Begins the list of a part.
    void begin();
    /// The part shows the cell; gives how much higher the list becomes.
    double add(const tables::GridCell& cell);
    /// The height of what a last part lists beyond what it has: footnotes that no part has listed.
    [[nodiscard]] double unlistedHeight() const;
    /// The height of all of them.
    [[nodiscard]] double wholeHeight() const;
    /// Writes the list; `marks` are the references of the part.
    void write(const std::vector<MarkPlace>& marks, bool isLast);

  private:
    /// The references of a part by their marks, each in the order in which they stand.
    using References = std::unordered_map<std::string_view, std::vector<const MarkPlace*>>;

    void writeNote(std::size_t number, const References& references);
    void writeMark(std::size_t number, const MarkPlace* reference, StructureElement* note);

    const tables::TableGrid& grid_;
    TextShaper& shaper_;
    StructureTree& structure_;
    PageFlow& flow_;
    ParagraphLook look_;
    double indent_ = 0;
    std::vector<double> heights_;                                     // by footnote
    std::unordered_multimap<std::string_view, std::size_t> numbers_;  // of footnotes, by their marks
    std::set<std::size_t> part_;                                      // of the part
    std::set<std::size_t> listed_;
};

}  // namespace vexa::frontend::pdf
