// The columns of a worksheet in a binary workbook: their widths, and what else is said of them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "frontend/export/xls/record_reader.h"

namespace vexa::frontend::biff {

class SheetColumns {
  public:
    /// `digitWidth`: of a digit of the workbook's usual font, in dots of 1/96 inch.
    explicit SheetColumns(double digitWidth) : digitWidth_(digitWidth) {}

    /// Takes in what a record says of columns; others say nothing.
    void read(const RecordView& record);

    /// Makes a column that wide; one that `keeps` its width only where it is narrower than that, and never
    /// one that is hidden.
    void widen(std::size_t column, double points, bool keeps);
    /// The width of a column in points, 0 where it is hidden.
    [[nodiscard]] double points(std::size_t column) const;

    [[nodiscard]] bool changed() const { return changed_; }
    /// Appends the columns' records.
    void append(std::string& out) const;

  private:
    struct Column {
        std::uint16_t width = 0;  ///< of 256 parts of a digit
        std::uint16_t format = plainFormat;
        std::uint16_t flags = 0;
        std::uint16_t reserved = 0;

        bool operator==(const Column&) const = default;
    };
    [[nodiscard]] double pointsOf(double width) const;

    double digitWidth_;
    double defaultWidth_ = 8;  ///< digits
    bool defaultIsWhole_ = false;
    bool changed_ = false;
    std::array<std::optional<Column>, columnCount> columns_;
};

}  // namespace vexa::frontend::biff
