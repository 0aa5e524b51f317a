// The columns of a worksheet with the widths that an export wants.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/export/xlsx/sheet_survey.h"

namespace vexa::frontend {

/// The `col` elements of a sheet: those that are there, and what is made of them.
class SheetColumns {
  public:
    /// Takes the start tag of an element that is there. What is no column is dropped.
    void add(std::string_view raw);
    /// Wants a width for a column, points. A column is never made narrower, and one that is hidden stays so.
    void want(std::uint32_t column, double points) { wanted_[column] = points; }
    /// The elements, without the one around them; empty where there is none. `usedColumns` is how many
    /// columns have something: the others take every width.
    [[nodiscard]] std::string text(std::string_view prefix, const SheetSurvey& survey) const;

  private:
    struct Column {
        std::uint32_t first = 0;
        std::uint32_t last = 0;
        bool isHidden = false;
        double width = -1;       ///< as the XML has it; below 0 where it has none
        std::string attributes;  ///< all but its ends, width and what says that the width is set
        std::string widthAttributes;
    };
    static void append(std::string& out, std::string_view prefix, const Column& column, std::uint32_t first,
                       std::uint32_t last);

    std::vector<Column> columns_;
    std::map<std::uint32_t, double> wanted_;
};

}  // namespace vexa::frontend
