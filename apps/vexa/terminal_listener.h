// Shows the log on the terminal: results on one stream, messages on the other.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>

#include "apps/rendering/text_style.h"
#include "apps/vexa/diagnostics.h"
#include "backend/pivot/output_log.h"

namespace vexa::program {

struct TerminalLook {
    std::size_t width = 0;       ///< columns of the result stream, 0 for no limit
    bool styledResults = false;  ///< the result stream shows ANSI sequences
    rendering::ColorDepth resultColors = rendering::ColorDepth::none;
    bool colouredMessages = false;  ///< the message stream does
    bool jsonMessages = false;      ///< messages are written as `diagnosticLine` has them
    bool quiet = false;             ///< no results, and of messages only warnings and errors
};

/// Tables, notes and printed text go to `results`, messages to `messages`. Both streams outlive the listener.
/// Text from outside is shown so that it cannot steer the terminal.
class TerminalListener : public LogListener {
  public:
    TerminalListener(std::ostream& results, std::ostream& messages, TerminalLook look)
        : results_(results), messages_(messages), look_(look) {}

    void receive(const LogEvent& event) override;

    /// Shows a message of the program itself.
    void showMessage(int level, std::string_view text);

  private:
    void show(const SyntaxErrorReported& error);
    void show(const SyntaxWarned& warning);
    void show(const ParserMessageReported& report);
    void show(const ErrorReported& error);
    void show(const NotesAdded& notes);
    void show(const TableFinished& table);
    void show(const TextPrinted& text);
    template <typename Event>
    void show(const Event& /*event*/) {}

    [[nodiscard]] rendering::RenderOptions renderOptions() const;
    void showAt(const SourcePlace& place, Diagnostic diagnostic);
    /// At the place of the command that is running.
    void showHere(Diagnostic diagnostic);
    void showResult(const std::string& text);
    void showDiagnostic(const Diagnostic& diagnostic);
    void showSentence(const Diagnostic& diagnostic);

    std::ostream& results_;
    std::ostream& messages_;
    TerminalLook look_;
};

/// The source line of a place and a caret line under it, each with its line end; empty without a source line.
/// Tabs become blanks, wide characters count twice, and of a long line only what stands around the place is
/// shown.
[[nodiscard]] std::string sourceWithCaret(const SourcePlace& place);

}  // namespace vexa::program
