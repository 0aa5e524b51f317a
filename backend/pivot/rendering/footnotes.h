// The notes of a table's cells, with their letters.
#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace vexa::rendering {

/// The letters of the footnote with this number, counted from 0: a, b, ..., z, aa, ab, ...
[[nodiscard]] std::string footnoteLetters(std::size_t number);

/// Gives every different note letters, in the order in which they are asked for.
class Footnotes {
  public:
    /// What stands after the text of a cell with these notes, " [a]" or " [a,b]"; empty without notes.
    [[nodiscard]] std::string markerOf(const std::vector<std::string>& notes);

    /// The notes in the order of their letters.
    [[nodiscard]] const std::vector<std::string>& notes() const { return notes_; }

  private:
    std::vector<std::string> notes_;
    std::unordered_map<std::string, std::size_t> numbers_;
};

}  // namespace vexa::rendering
