// What the back end wants of the next commands: to run them, only to check their syntax, or only to learn
// their grammar.
//
// Commands do not know of it: in the last two modes the parser answers non-zero after its work, and a command
// stops there as it does after a syntax error.
#pragma once

#include <optional>

#include "backend/syntax/descriptors.h"

namespace vexa {

enum class ParseMode { run, checkOnly, describe };

/// Switches the mode for as long as the object lives.
class ParseModeScope {
  public:
    explicit ParseModeScope(ParseMode mode);
    ~ParseModeScope();
    ParseModeScope(const ParseModeScope&) = delete;
    ParseModeScope& operator=(const ParseModeScope&) = delete;

    /// In the mode `describe`: the description that the command handed to the parser, once it has run. Its
    /// texts belong to the module and live as long as it is loaded.
    [[nodiscard]] const std::optional<CommandDescriptor>& description() const { return description_; }

    /// The scope that is in force, or null when commands run.
    [[nodiscard]] static ParseModeScope* current();

    [[nodiscard]] ParseMode mode() const { return mode_; }
    void setDescription(const CommandDescriptor& description) { description_ = description; }

  private:
    ParseMode mode_;
    ParseModeScope* outer_;
    std::optional<CommandDescriptor> description_;
};

}  // namespace vexa
