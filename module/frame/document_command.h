// One run of a document command: describe, parse, and, once the command has checked its values, send and
// report.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "backend/adapter/client_adapter.h"
#include "backend/pivot/bp_procedure.h"
#include "backend/syntax/command_spec.h"
#include "backend/syntax/parser_message.h"
#include "backend/syntax/universal_parser.h"
#include "backend/tokens/token_sequence.h"
#include "module/frame/grammar.h"

namespace vexa {

/// The names of a command.
struct CommandIdentity {
    std::string_view name;      ///< in capitals: "OUTPUT NEW"
    SystemText procedureTitle;  ///< of its block in the log: "Output New"
    std::string_view
        parserTitle;  ///< the procedure title of its parser messages; empty for a command without them
};

/// Longest document name, in bytes.
inline constexpr std::size_t kLongestName = 64;

/// The frame that every document command follows. Its parts live in the order in which the members stand and
/// are destroyed in reverse; nothing is kept between two runs.
class DocumentCommand {
  public:
    /// Opens the command's block in the log, looks for the output controller and describes the command.
    DocumentCommand(const CommandIdentity& identity, GrammarTable grammar);

    /// Parses the current command and flushes the log. False when the command must stop: on a syntax error,
    /// which the parser has reported, or without an output controller, which has been reported here.
    [[nodiscard]] bool parse();

    [[nodiscard]] const CommandSpec& spec() const { return spec_; }
    /// The unnamed subcommand; there in every command that describes one, once it is parsed.
    [[nodiscard]] const SubComObj& leading() const { return *spec_.getSubComObj(""); }
    /// Only for a command whose identity has a parser title.
    [[nodiscard]] ParserMessage& messages() { return *messages_; }
    [[nodiscard]] BpProcedure& procedure() { return procedure_; }

    /// Reports a name of more than 64 bytes; true when it did.
    [[nodiscard]] bool refusesLongName(std::string_view name);

    /// Sends a short request, its texts as they are. The answer, or nothing when the request was refused,
    /// which has then been reported.
    std::optional<VexawMsgOutputControllerResponse> send(OutputControllerCommand command,
                                                         const std::string& name,
                                                         OutputDocumentMinimized minimized);
    /// Sends a short request and ignores the answer.
    void sendUnanswered(OutputControllerCommand command, const std::string& name,
                        OutputDocumentMinimized minimized);

    /// What a long request carries besides its number and command.
    struct FileRequest {
        std::string name;
        std::string file;
        OutputDocumentLock lock = OutputDocumentLock::notGiven;
        OutputDocumentMinimized minimized = OutputDocumentMinimized::notGiven;
        OutputDocumentType type = OutputDocumentType::notGiven;
        std::string password;
        OutputDocumentEncryptPW encrypted = OutputDocumentEncryptPW::notGiven;
        YesNoEnum yesNo = YesNoEnum::no;
    };
    /// The same with a long request.
    std::optional<VexawMsgOutputControllerResponse> send(OutputControllerCommand command,
                                                         const FileRequest& request);

  private:
    std::optional<VexawMsgOutputControllerResponse> exchange(const VexawMsgOutputControllerRequest& request);

    std::string_view name_;
    BpProcedure procedure_;
    OutputController* controller_;
    std::optional<ParserMessage> messages_;
    CommandSpec spec_;
    CommandDescriptor descriptor_;
    VEXA_TokenSequence tokens_;
    UniversalParser parser_;
};

}  // namespace vexa
