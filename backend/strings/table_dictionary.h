// Texts of one language, looked up in the string tables of an installation.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace vexa {

struct LoadedStringTable;

/// The string dictionary of one language. Texts and keys are in the back end's character set.
class FacSTDictionary {
  public:
    /// `location`: the folder with the language's string tables (`...\lang\de\`, either separator, with or
    /// without one at the end). Nothing is read yet, so a folder that does not exist is no mistake.
    explicit FacSTDictionary(std::string_view location);

    /// Selects the procedure ("Output Modify") whose table keys are looked up in. One without a table, or
    /// with a file that cannot be read, has no texts.
    void SetProcedure(std::string_view procedure);
    /// The text of `key`: of the last such entry, where a table has several. A key that the table lacks or
    /// has an empty text for, and every key as long as no procedure is selected, is its own text.
    [[nodiscard]] std::string LookUp(std::string_view key) const;

  private:
    std::string location_;  // UTF-8, with a separator at the end unless it is empty
    std::shared_ptr<const LoadedStringTable> table_;
};

}  // namespace vexa
