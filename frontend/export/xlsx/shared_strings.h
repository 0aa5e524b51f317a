// The texts of a workbook's cells, to which those of a sheet are added behind the ones that are there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "frontend/export/workbook/sheet_content.h"
#include "frontend/package/deflate_stream.h"
#include "frontend/package/zip_entry_stream.h"

namespace vexa::frontend {

class SharedStrings {
  public:
    /// The number of a cell's text among those that are added, from 0. The content must live as long.
    std::size_t add(const SheetContent& content, const SheetCell& cell);
    [[nodiscard]] bool isEmpty() const { return count_ == 0; }

    /// Copies the part from `source` to `out` with the texts behind its own, of which `before` then is the
    /// number. An empty prefix of `source` is a part of its own.
    PackageResult write(const ByteSource& source, DeflateStream& out, std::size_t& before) const;

  private:
    std::size_t addItem(std::string item);

    std::string items_;                                        ///< their XML, without prefixes
    std::size_t count_ = 0;                                    ///< of texts
    std::size_t uses_ = 0;                                     ///< of cells
    std::unordered_map<std::string, std::size_t> known_;       ///< by XML
    std::unordered_map<std::string_view, std::size_t> plain_;  ///< by text, of those without a format
};

/// The part of a workbook without texts.
[[nodiscard]] std::string_view noSharedStrings();

/// Appends a text as cells and names have it: what XML cannot hold as `_x001F_`, and what looks like that,
/// too.
void appendEscapedText(std::string& out, std::string_view text);

/// `xml`, whose elements have no prefixes, with `prefix` before each of their names.
[[nodiscard]] std::string prefixed(std::string_view xml, std::string_view prefix);

}  // namespace vexa::frontend
