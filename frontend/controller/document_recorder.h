// Lets the active document take what the output log produces.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "backend/pivot/output_log.h"
#include "frontend/controller/open_documents.h"

namespace vexa::frontend {

class DocumentRecorder : public LogListener {
  public:
    /// Called with the name of a locked document that could not take output, once an activation. It must not
    /// publish into the log.
    using LockedReport = std::function<void(const std::string& documentName)>;

    /// `documents` must outlive the recorder. Who makes the recorder adds it to the log and removes it.
    DocumentRecorder(OpenDocuments& documents, LockedReport reportLocked);

    /// Messages, notes, tables and printed text go into the active document, under a heading for each
    /// procedure run. When no document is open, a table makes one; everything else goes nowhere.
    void receive(const LogEvent& event) override;

  private:
    /// A procedure that is running, and the items that it has in the active document. The ids hold for one
    /// activation.
    struct Run {
        std::string title;
        std::uint64_t activation = 0;
        ItemId heading = 0;
        ItemId notes = 0;
    };

    void handle(const CommandStarted& event);
    void handle(const CommandFinished& event);
    void handle(const ProcedureBegan& event);
    void handle(const ProcedureEnded& event);
    void handle(const LogFlushed& event);
    void handle(const SyntaxErrorReported& event);
    void handle(const SyntaxWarned& event);
    void handle(const ParserMessageReported& event);
    void handle(const ErrorReported& event);
    void handle(const NotesAdded& event);
    void handle(const TableFinished& event);
    void handle(const TextPrinted& event);

    /// The document that takes output now, or null.
    ViewerDocument* target();
    /// The heading of the innermost run in `document`, made with those around it where it is missing; 0
    /// outside runs.
    ItemId headingIn(ViewerDocument& document);
    void addMessage(int level, const std::string& text);
    ItemId add(ViewerDocument& document, std::string label, ItemContent content, std::string subtype = {});
    [[nodiscard]] ViewerItem makeItem(std::string label, ItemContent content) const;

    OpenDocuments& documents_;
    LockedReport reportLocked_;
    std::uint64_t reportedActivation_ = 0;
    std::vector<std::string> commands_;
    std::vector<Run> runs_;
};

}  // namespace vexa::frontend
