// The formats in which the numbers of a table are shown.
#pragma once

#include <memory>
#include <vector>

#include "backend/tables/model/table_data.h"
#include "backend/tables/model/table_style.h"
#include "backend/tables/model/table_view.h"

namespace vexa::frontend {

/// Tells whether numbers are shown in a format already.
class NumberFormats {
  public:
    /// Data and style must live as long; the style may change meanwhile.
    NumberFormats(const tables::TableData& data, const tables::TableView& view,
                  const tables::TableStyle& style)
        : data_(data), style_(style), order_(view.formatOrder()) {}

    /// False where the number has a text of its own. `cell` must be a number.
    [[nodiscard]] bool isShownIn(tables::DisplayFormat format, tables::Place place,
                                 const tables::TableCell& cell) const;

  private:
    const tables::TableData& data_;
    const tables::TableStyle& style_;
    std::vector<tables::DimensionId> order_;
};

/// The data without the texts that these numbers show in the place of what value and format give, so that a
/// format that is asked for can be seen. The same data where no number has such a text.
[[nodiscard]] std::shared_ptr<const tables::TableData> withoutOwnTexts(
    const std::shared_ptr<const tables::TableData>& data, const std::vector<tables::Place>& places);

/// The same for all numbers.
[[nodiscard]] std::shared_ptr<const tables::TableData> withoutOwnTexts(
    const std::shared_ptr<const tables::TableData>& data);

}  // namespace vexa::frontend
