// Texts as the records of binary workbooks hold them: one byte a character where all are below U+0100, else
// UTF-16.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "frontend/export/xls/records.h"

namespace vexa::frontend::biff {

struct BookText {
    std::string bytes;
    std::size_t units = 0;
    bool wide = false;  ///< two bytes a unit

    [[nodiscard]] std::size_t width() const { return wide ? 2 : 1; }
};

/// Of a text in UTF-8.
[[nodiscard]] BookText bookText(std::string_view text);

/// Appends the text with its length in `lengthBytes` bytes (1 or 2) in front, cut to what these can count.
void appendText(Records& records, std::string_view text, std::size_t lengthBytes);

/// The text, as UTF-8, that `appendText` wrote at `at`; nothing where it is cut off. Runs of fonts behind it
/// are none of it.
[[nodiscard]] std::optional<std::string> textAt(std::string_view content, std::size_t at,
                                                std::size_t lengthBytes);

}  // namespace vexa::frontend::biff
