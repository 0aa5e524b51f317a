// Lets the active document take what the output log produces.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "backend/pivot/output_log.h"
#include "frontend/controller/open_documents.h"

namespace vexa::frontend {

/// What goes into documents.
enum class Recording : std::uint8_t {
    output,  ///< what a document's reader shall see: not what the document commands say of themselves
    all
};

class DocumentRecorder : public LogListener {
  public:
    /// Called with the name of a locked document that could not take output, once an activation. It must not
    /// publish into the log.
    using LockedReport = std::function<void(const std::string& documentName)>;

    /// `documents` must outlive the recorder. Who makes the recorder adds it to the log and removes it.
    DocumentRecorder(OpenDocuments& documents, LockedReport reportLocked,
                     Recording recording = Recording::output);

    /// Messages, notes, tables and printed text go into the active document, under a header for each
    /// procedure run. When no document is open, a table makes one; everything else goes nowhere.
    ///
    /// Of the document commands themselves only the tables of OUTPUT COMMENT and STB PRINT are taken.
    void receive(const LogEvent& event) override;

  private:
    /// A procedure that is running, and the items that it has in the active document. The ids hold for one
    /// activation.
    struct OpenRun {
        std::string title;
        std::uint64_t activation = 0;
        ItemId header = 0;
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

    /// Whether the command that runs, if any, speaks to the document's reader.
    [[nodiscard]] bool isRecorded(bool isTable) const;
    /// The document that takes output now, or null.
    ViewerDocument* target();
    /// The header of the innermost run in `document`, made with those around it where it is missing; 0
    /// outside runs.
    ItemId headerIn(ViewerDocument& document);
    void addMessage(int level, const std::string& text);
    /// Goes on with the log that stands last in the run, or begins one.
    void addLog(const std::string& text);
    ItemId add(ViewerDocument& document, std::string label, ItemContent content, std::string subtype = {});

    OpenDocuments& documents_;
    LockedReport reportLocked_;
    Recording recording_;
    std::uint64_t reportedActivation_ = 0;
    std::uint64_t logActivation_ = 0;  // of `log_`
    ItemId log_ = 0;                   // the log that was added last
    std::vector<std::string> commands_;
    std::vector<OpenRun> runs_;
};

}  // namespace vexa::frontend
