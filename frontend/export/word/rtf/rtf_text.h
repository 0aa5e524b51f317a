// Texts, fonts and colours in the Rich Text Format.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "backend/tables/model/table_look.h"

namespace vexa::frontend {

/// Appends the text: what is no ASCII by the numbers of its characters, line ends and tabs as words.
void appendRtfText(std::string& rtf, std::string_view text);

/// Appends a control word with its number.
void appendWord(std::string& rtf, std::string_view word, std::int64_t number);

/// What says that a text is written from right to left, with the words for fonts of `words` as such texts
/// have them.
[[nodiscard]] std::string turnedWords(std::string_view words);

/// The fonts and colours of a document, numbered in the order in which they are asked for first.
class RtfTables {
  public:
    RtfTables();

    [[nodiscard]] std::size_t font(std::string_view family);
    [[nodiscard]] std::size_t color(tables::Color color);
    /// The groups that stand at the beginning of the file.
    [[nodiscard]] std::string text() const;

  private:
    std::unordered_map<std::string, std::size_t> fontNumbers_;
    std::vector<std::string> fonts_;
    std::unordered_map<std::uint32_t, std::size_t> colorNumbers_;
    std::vector<tables::Color> colors_;
};

/// The number that systems have for a language tag; that of no language where it is not known.
[[nodiscard]] int languageNumber(std::string_view language);

}  // namespace vexa::frontend
