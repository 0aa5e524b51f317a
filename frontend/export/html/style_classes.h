// Styles of table cells as classes of one style sheet: each different style is written once for the whole
// page.
#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include "backend/tables/layout/table_grid.h"

namespace vexa::frontend {

/// Declarations for a style; `isNumber` decides how `mixed` aligns. With `restyle`, only what keeps its
/// meaning in another design: bold, italic, underline, alignment.
[[nodiscard]] std::string styleDeclarations(const tables::ShownStyle& style, bool isNumber, bool restyle);

/// Declarations for what a text sets of its own.
[[nodiscard]] std::string styleDeclarations(const tables::CellStyle& style, bool restyle);

class StyleClasses {
  public:
    explicit StyleClasses(bool restyle) : restyle_(restyle) {}

    /// Begins a grid; classes are asked for by its styles until the next one begins.
    void begin(const tables::TableGrid& grid);
    /// The name of the class; empty where the style declares nothing.
    [[nodiscard]] const std::string& classOf(tables::ShownStyleId style, bool isNumber);
    /// A rule for each class that was asked for.
    [[nodiscard]] const std::string& rules() const { return rules_; }

  private:
    [[nodiscard]] std::size_t find(std::string declarations);

    bool restyle_;
    const tables::TableGrid* grid_ = nullptr;
    std::vector<std::size_t> known_;  // of the grid's styles, texts and numbers; 0 for one not asked for yet
    std::unordered_map<std::string, std::size_t> byDeclarations_;
    std::vector<std::string> names_;
    std::string rules_;
};

}  // namespace vexa::frontend
