// One run of a command, from its name to what was parsed of it. Every command has this frame; who sends
// requests of document commands has DocumentCommand (document_command.h).
#pragma once

#include <optional>
#include <string_view>

#include "backend/adapter/client_adapter.h"
#include "backend/pivot/bp_procedure.h"
#include "backend/syntax/command_spec.h"
#include "backend/syntax/parser_message.h"
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

/// Its parts live in the order in which the members stand, which is that of the steps of a run, and are
/// destroyed in reverse; nothing is kept between two runs.
class Command {
  public:
    /// Opens the command's block in the log and describes the command.
    Command(const CommandIdentity& identity, GrammarTable grammar);

    /// Parses the current command and flushes the log. False when the command must stop: on a syntax error,
    /// which the parser has reported, or without an output controller that it asked for, which has been
    /// reported here.
    [[nodiscard]] bool parse();

    [[nodiscard]] const CommandSpec& spec() const { return spec_; }
    /// The unnamed subcommand; there in every command that describes one, once it is parsed.
    [[nodiscard]] const SubComObj& leading() const { return *spec_.getSubComObj(""); }
    /// Only for a command whose identity has a parser title.
    [[nodiscard]] ParserMessage& messages() { return *messages_; }
    [[nodiscard]] BpProcedure& procedure() { return procedure_; }

  protected:
    /// What a command asks the back end for as soon as its block is open.
    enum class AsksFor { nothing, outputController };

    Command(const CommandIdentity& identity, GrammarTable grammar, AsksFor asked);

    /// For a grammar that is not one table; before the command is parsed.
    [[nodiscard]] CommandDescriptor& descriptor() { return descriptor_; }
    /// Only for a command that asked for it, once it is parsed.
    [[nodiscard]] OutputController& controller() { return *controller_; }

  private:
    std::string_view name_;
    BpProcedure procedure_;
    bool needsController_;
    OutputController* controller_;
    std::optional<ParserMessage> messages_;
    CommandSpec spec_;
    CommandDescriptor descriptor_;
    VEXA_TokenSequence tokens_;
};

}  // namespace vexa
