// The table of texts that all sheets of a binary workbook share (SST), and the index into it (EXTSST).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "frontend/export/xls/records.h"

namespace vexa::frontend::biff {

/// Texts that are there keep their numbers and bytes; further ones come behind them.
class BookStrings {
  public:
    /// The table of a workbook: its record with the CONTINUE records behind it, which must live as long as
    /// this. False where texts are cut off or missing.
    [[nodiscard]] bool read(std::string_view raw);

    /// The number of a text (UTF-8, at most 32,767 units) of a cell. The last `raised` bytes of it are in the
    /// font of number `font`. The same number for what is equal; each call counts as one cell that shows it.
    std::uint32_t add(std::string_view text, std::size_t raised, std::uint16_t font);

    [[nodiscard]] bool changed() const { return !own_.empty(); }
    [[nodiscard]] bool empty() const { return places_.empty(); }

    /// Appends the table's records.
    void append(std::string& out) const;
    /// Appends the index of a table whose first record stands at `at` of the stream.
    void appendIndex(std::string& out, std::size_t at) const;

  private:
    class Reader;
    /// Where a text begins: from the beginning of the table's first record, and within its own record.
    struct Place {
        std::uint32_t at = 0;
        std::uint16_t inRecord = 0;
    };
    void write(std::string_view text, std::size_t raised, std::uint16_t font);
    void beginPart();
    [[nodiscard]] std::size_t room() const { return mostBytes - part_; }

    std::string_view read_;
    std::string own_;  ///< CONTINUE records with what was added; lengths are kept right
    std::size_t partAt_ = 0;
    std::size_t part_ = mostBytes;  ///< bytes in the last of these records
    std::vector<Place> places_;
    std::uint32_t references_ = 0;
    std::unordered_map<std::string, std::uint32_t> added_;
};

}  // namespace vexa::frontend::biff
