// The 56 colours that the cells of a binary workbook can have.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "backend/tables/model/table_look.h"

namespace vexa::frontend::biff {

class BookPalette {
  public:
    static constexpr std::size_t size = 56;
    /// Number of the first colour; below it stand eight of them once more.
    static constexpr std::uint16_t first = 8;

    /// The palette of a workbook that says nothing of it.
    BookPalette();

    /// The content of a workbook's own palette record.
    void read(std::string_view content);

    /// Gives colours in use places of their own: in those of colours that nobody uses, the ones used most
    /// first. Only for a workbook that has no cells yet. `uses`: how often each is used.
    void take(const std::map<std::uint32_t, std::size_t>& uses);

    /// The number of the colour, or of the one that looks most like it.
    [[nodiscard]] std::uint16_t nearest(tables::Color color) const;
    [[nodiscard]] tables::Color color(std::uint16_t number) const;
    [[nodiscard]] bool holds(tables::Color color) const { return this->color(nearest(color)) == color; }

    /// Whether it differs from the one that needs no record.
    [[nodiscard]] bool changed() const;
    void append(std::string& out) const;

  private:
    std::array<std::uint32_t, size> colors_;  ///< 0xRRGGBB
};

}  // namespace vexa::frontend::biff
