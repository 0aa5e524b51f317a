// The texts that the user sees, in the language of the user.
//
// Every text is its own key: it is looked up in the string table of the current procedure, then in those of
// the libraries, and shown as it stands where no table has it. All texts here are UTF-8.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "backend/platform/file_system.h"
#include "backend/text/system_text.h"

namespace vexa {

struct LoadedStringTable;

/// The texts of one language. Tables are read when they are first needed; one that is missing or cannot be
/// read has no texts.
class StringDictionary {
  public:
    /// The dictionary that shown texts are looked up in; without texts until the program opens it.
    static StringDictionary& current();

    /// From now on texts come from the tables in `folder`; an empty one gives no texts.
    void open(std::string_view folder);

    /// The procedure whose table comes first; `BpProcedure` sets it.
    void setProcedure(std::string_view procedure);
    [[nodiscard]] const std::string& procedure() const { return procedure_; }

    /// The text for `key`, or `key` itself where no table has it, or only an empty text.
    [[nodiscard]] std::string lookUp(std::string_view key) const;

  private:
    using Table = std::shared_ptr<const LoadedStringTable>;

    std::string folder_;  // with a separator at the end unless it is empty
    std::string procedure_;
    mutable std::optional<Table> ofProcedure_;               // empty until it is needed
    mutable std::optional<std::vector<Table>> ofLibraries_;  // empty until they are needed
};

/// `text` in the language of the user.
[[nodiscard]] std::string translated(std::string_view text);

/// `text` in the language of the user, its markers ^1, ^2, ... replaced by the arguments.
[[nodiscard]] std::string composed(SystemText text, const std::vector<std::string>& arguments);

/// Why a file operation failed, in the language of the user.
[[nodiscard]] std::string shownReason(const FileResult& failure);

/// `text` with every marker ^1, ^2, ... ^9 replaced by the argument of its number; markers without an
/// argument stay, and so do markers that an argument's own text holds.
[[nodiscard]] std::string replaceMarkers(std::string_view text, const std::vector<std::string>& arguments);

/// Appends a sentence to a message: behind a blank, but not in a script whose full stop brings its own.
void appendSentence(std::string& message, std::string_view sentence);

}  // namespace vexa
