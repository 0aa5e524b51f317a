// Texts and how they look in WordprocessingML: runs, their properties, and those of paragraphs.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "backend/tables/model/table_look.h"
#include "frontend/export/word/text_styles.h"
#include "frontend/export/word/word_content.h"

namespace vexa::frontend {

/// Appends the text as the content of a run: line ends and tabs as elements.
void appendRunContent(std::string& xml, std::string_view text);
/// Appends a run; `properties` is what stands in its `w:rPr`, and may be empty.
void appendRun(std::string& xml, std::string_view text, std::string_view properties);

/// What stands in a `w:rPr`, in the order that the schema wants.
[[nodiscard]] std::string runProperties(const tables::CellStyle& own, bool bold, bool raised,
                                        bool rightToLeft);
[[nodiscard]] std::string runProperties(const WordTextStyle& style);

/// The word of `w:jc`; empty for `mixed`.
[[nodiscard]] std::string_view justification(tables::HorizontalAlign align);

/// `w:shd` with that ground.
void appendShading(std::string& xml, tables::Color color);

/// The id of the style that paragraphs of a role have.
[[nodiscard]] std::string styleIdOf(WordRole role, std::size_t level);
/// The id of the style of table texts with this number.
[[nodiscard]] std::string tableStyleId(std::size_t number);

}  // namespace vexa::frontend
