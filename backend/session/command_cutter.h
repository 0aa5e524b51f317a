// Cuts the text of a syntax file into commands.
//
// A command ends at a period that is the last non-blank character of a line, at a blank line, or at the end
// of the text. Comments count as blanks; a comment may go over several lines, but a blank line ends the
// command there as well. A command that begins with '*' is a comment up to its end. A line that holds nothing
// but a comment is no blank line.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "backend/tokens/command_text.h"

namespace vexa {

/// Follows the lines of one command and says where the command ends. Each line costs time in proportion to
/// its length.
class CommandEndFinder {
  public:
    enum class Ending { none, period, blankLine };

    /// Takes the command's next line, which is given without its line end.
    Ending addLine(std::string_view line);
    /// After `Ending::period`: the bytes of that line that belong to the command, without the period.
    [[nodiscard]] std::size_t lengthBeforePeriod() const { return lengthBeforePeriod_; }
    /// True when a line so far held something besides blanks and comments.
    [[nodiscard]] bool hasContent() const { return hasContent_; }
    /// The command is a comment because it begins with an asterisk.
    [[nodiscard]] bool isAsteriskComment() const { return asteriskComment_; }
    /// A comment is open behind the last line.
    [[nodiscard]] bool inComment() const { return inComment_; }
    /// Begins with a new command.
    void reset() { *this = CommandEndFinder(); }

  private:
    /// Offset behind the last byte that is neither blank nor in a comment; 0 when there is none.
    std::size_t contentEnd(std::string_view line);
    [[nodiscard]] bool opensComment(std::string_view line, std::size_t at, std::size_t lastClose) const;
    void noteContent(char first);

    std::size_t lengthBeforePeriod_ = 0;
    bool hasContent_ = false;
    bool asteriskComment_ = false;
    bool inComment_ = false;
};

/// `text` with every line end (LF, CRLF, CR) as LF and without a UTF-8 byte order mark at its beginning.
[[nodiscard]] std::string withPlainLineEnds(std::string text);

/// Gives the commands of a text one after the other. Linear in the length of the text.
class CommandCutter {
  public:
    /// `text`, as `withPlainLineEnds` gives it, and `file`, which places name (UTF-8), must outlive the
    /// cutter. `firstLine` is the number of the first line.
    CommandCutter(std::string_view text, std::string_view file, int firstLine = 1);

    /// Puts the next command into `command`, its text from the beginning of the line that the command's first
    /// word stands on, `arguments` at that word. False when there is none left. Comments and lone periods are
    /// passed over; a comment that is not closed where its command ends is given as a command, for its reader
    /// to complain of.
    bool next(CommandText& command);

  private:
    bool readCommand(CommandText& command);
    bool takeLine(std::string_view& line);

    std::string_view text_;
    std::string_view file_;
    std::size_t at_ = 0;
    int line_;  // number of the line at `at_`
};

/// Offset of the first byte at or behind `at` that is neither blank nor in a closed comment.
[[nodiscard]] std::size_t skipBlanksAndComments(std::string_view text, std::size_t at);

/// True for the blanks of the command language, line ends among them.
[[nodiscard]] bool isBlank(char c);

}  // namespace vexa
