// Styles of table cells as classes of one style sheet: each different style is written once for the whole
// page.
#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include "backend/tables/layout/table_grid.h"

namespace vexa::frontend {

/// Declarations for a style; `alignsRight` decides how `mixed` aligns. With `restyle`, only what keeps its
/// meaning in another design: bold, italic, underline, alignment.
[[nodiscard]] std::string styleDeclarations(const tables::ShownStyle& style, bool alignsRight, bool restyle);

/// Declarations for what a text sets of its own.
[[nodiscard]] std::string styleDeclarations(const tables::CellStyle& style, bool restyle);

class StyleClasses {
  public:
    explicit StyleClasses(bool restyle) : restyle_(restyle) {}

    /// Begins a grid; classes are asked for by its styles until the next one begins.
    void begin(const tables::TableGrid& grid);
    /// The name of the class; empty where the style declares nothing.
    [[nodiscard]] const std::string& classOf(tables::ShownStyleId style, bool alignsRight) {
        return classes_[found(style, alignsRight)].name;
    }
    /// `<td class="NAME">`, or without the class.
    [[nodiscard]] const std::string& cellOf(tables::ShownStyleId style, bool alignsRight) {
        return classes_[found(style, alignsRight)].cell;
    }
    /// A rule for each class that was asked for.
    [[nodiscard]] const std::string& rules() const { return rules_; }

  private:
    struct StyleClass {
        std::string name;
        std::string cell = "<td>";
    };
    /// Index into `classes_`.
    [[nodiscard]] std::size_t found(tables::ShownStyleId style, bool alignsRight) {
        const std::size_t known = known_[style * 2 + (alignsRight ? 1 : 0)];
        return known != 0 ? known - 1 : find(style, alignsRight);
    }
    [[nodiscard]] std::size_t find(tables::ShownStyleId style, bool alignsRight);

    bool restyle_;
    std::vector<tables::ShownStyle> styles_;  // of the grid
    std::vector<std::size_t> known_;          // of each, texts and numbers; 0 for one not asked for yet
    std::unordered_map<std::string, std::size_t> byDeclarations_;
    std::vector<StyleClass> classes_;
    std::string rules_;
};

}  // namespace vexa::frontend
