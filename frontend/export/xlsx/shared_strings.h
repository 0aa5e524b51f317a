// The texts of a workbook's cells, to which those of a sheet are added behind the ones that are there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "frontend/export/workbook/sheet_content.h"
#include "frontend/package/deflate_stream.h"
#include "frontend/package/packed_text.h"
#include "frontend/package/zip_entry_stream.h"

namespace vexa::frontend {

class SharedStrings {
  public:
    /// The number of a cell's text among those that are added, from 0. The content must live as long.
    std::size_t add(const SheetContent& content, const SheetCell& cell);
    [[nodiscard]] bool isEmpty() const { return count_ == 0; }

    /// Copies the part from `source` to `out` with the texts behind its own, of which `before` then is the
    /// number. An empty prefix of `source` is a part of its own. Called once.
    PackageResult write(const ByteSource& source, DeflateStream& out, std::size_t& before);

  private:
    /// A text, how many bytes of its end are raised, and the number of its font; 0 where nothing is raised.
    struct Key {
        std::string_view text;
        std::size_t raised = 0;
        std::size_t font = 0;

        bool operator==(const Key&) const = default;
    };
    struct KeyHash {
        std::size_t operator()(const Key& key) const {
            constexpr std::size_t apart = 0x9E3779B97F4A7C15U;
            return std::hash<std::string_view>()(key.text) ^ (key.raised * 31 + key.font) * apart;
        }
    };

    void appendRaised(std::string_view text, std::size_t raised, const SheetStyle& style);
    PackageResult writeItems(DeflateStream& out, std::string_view prefix);

    std::string items_;      ///< the XML of the last texts, without prefixes
    PackedText packed_;      ///< of those before
    std::size_t count_ = 0;  ///< of texts
    std::size_t uses_ = 0;   ///< of cells
    std::unordered_map<Key, std::size_t, KeyHash> known_;
    std::unordered_map<std::string, std::size_t> fonts_;  ///< numbers, by their XML
};

/// The part of a workbook without texts.
[[nodiscard]] std::string_view noSharedStrings();

/// Appends a text as cells and names have it: what XML cannot hold as `_x001F_`, and what looks like that,
/// too.
void appendEscapedText(std::string& out, std::string_view text);

/// `xml`, whose elements have no prefixes, with `prefix` before each of their names.
[[nodiscard]] std::string prefixed(std::string_view xml, std::string_view prefix);

}  // namespace vexa::frontend
