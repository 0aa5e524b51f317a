// The styles of a Rich Text document. Every paragraph repeats what its style says, so both come from here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "frontend/export/word/rtf/rtf_text.h"
#include "frontend/export/word/text_styles.h"
#include "frontend/export/word/word_content.h"

namespace vexa::frontend {

class RtfStyles {
  public:
    /// `textWidth` is what is between the margins, twips.
    RtfStyles(RtfTables& tables, std::int64_t textWidth) : tables_(tables), textWidth_(textWidth) {}

    /// The control words of a paragraph of a role, its style's number first.
    [[nodiscard]] std::string role(WordRole role, std::size_t level);
    [[nodiscard]] std::string contentsHeading();
    [[nodiscard]] std::string contentsEntry(std::size_t level);
    [[nodiscard]] std::string footer();
    /// The same for texts of tables; their styles are numbered from 100.
    [[nodiscard]] std::string tableText(const WordTextStyle& style);
    /// What a text sets of its own.
    [[nodiscard]] std::string own(const tables::CellStyle& style);

    /// The group that names all of them.
    [[nodiscard]] std::string sheet();

  private:
    [[nodiscard]] std::string looks(const WordTextStyle& style);

    RtfTables& tables_;
    std::int64_t textWidth_;
    TextStyles styles_;
};

}  // namespace vexa::frontend
