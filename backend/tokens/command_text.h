// The text of the command that is being executed.
#pragma once

#include <cstddef>
#include <string>

#include "backend/text/source_place.h"

namespace vexa {

/// One command as it stands in its syntax file. Texts are in the back end's character set.
struct CommandText {
    std::string text;  ///< whole lines, from the beginning of the command's first line to before its period
    std::size_t arguments = 0;  ///< offset in `text` of what follows the command's name
    std::string file;           ///< as the user named it; empty for none
    int line = 1;               ///< line of the file that `text` begins on
    std::string lineRest = {};  ///< what follows `text` in its last line: the period, comments
};

/// Where the byte `offset` of the command stands, with its source line. An offset behind the end is the end.
[[nodiscard]] SourcePlace placeOf(const CommandText& command, std::size_t offset);

/// The command being executed, or null between commands.
[[nodiscard]] const CommandText* currentCommand();

/// Makes a command the current one for as long as the object lives. The command is not owned.
class CurrentCommandScope {
  public:
    explicit CurrentCommandScope(const CommandText& command);
    ~CurrentCommandScope();
    CurrentCommandScope(const CurrentCommandScope&) = delete;
    CurrentCommandScope& operator=(const CurrentCommandScope&) = delete;

  private:
    const CommandText* outer_;
};

}  // namespace vexa
