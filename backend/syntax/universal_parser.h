// Parses the tokens of a command against its description.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "backend/syntax/command_spec.h"
#include "backend/syntax/descriptors.h"
#include "backend/tokens/token_sequence.h"

namespace vexa {

/// Why a command was refused: at the byte `offset` of the command's text.
struct ParseError {
    std::string message;  ///< UTF-8
    std::size_t offset = 0;
};

/// Fills a `CommandSpec` from tokens. All three must outlive the parser; the results refer to the tokens.
class UniversalParser {
  public:
    UniversalParser(const TokenSequenceBase& tokens, CommandSpec& spec, const CommandDescriptor& descriptor);

    /// Parses the whole command. 0 on success; otherwise the first error has been reported into the output
    /// log, with its place, and the results hold what came before it. See parse_mode.h for what else makes it
    /// answer non-zero.
    int getCommandSpecifications();

  private:
    using Tokens = std::span<const TokenInfoObj>;

    bool parse();
    bool parseLeading();
    bool parseNext();
    bool parseSubcommand(const SubComDescriptor& descriptor, SubComList& list, const TokenInfoObj& keyword);
    bool parseGroupSubcommand(const GroupComDescriptor& group, const SubComDescriptor& descriptor,
                              const TokenInfoObj& keyword);
    bool parseBody(const SubComDescriptor& descriptor, SubComObj& result);
    void takeFreeTokens(SubComObj& result);
    bool parseParameter(const SubComDescriptor& descriptor, SubComObj& result,
                        const ParamDescriptor& parameter);
    bool takeValue(const SubComDescriptor& descriptor, const ParamDescriptor& parameter, bool equalsGiven,
                   Tokens& value);
    bool takeBracketed(const ParamDescriptor& parameter, Tokens& value);
    Tokens takePlain(const SubComDescriptor& descriptor, const ParamDescriptor& parameter, bool equalsGiven);
    bool refuseParameter(const SubComDescriptor& descriptor);
    bool refuseSubcommand(const TokenInfoObj& word);
    bool checkRequired(const SubComDescriptor& descriptor, const SubComObj& result, std::size_t offset);
    bool checkRequiredSubcommands();

    [[nodiscard]] bool atEnd() const { return at_ >= tokens_.size(); }
    [[nodiscard]] bool isAt(int operatorCode) const;
    [[nodiscard]] bool beginsSubcommand(std::size_t at) const;
    [[nodiscard]] bool endsValue(const SubComDescriptor& descriptor, const ParamDescriptor& parameter,
                                 std::size_t at) const;
    /// Index of the bracket that closes the one at `open`, or of the end of the command when none does.
    /// Brackets and parentheses are matched each for themselves: commands report a wrong nesting in their own
    /// words.
    [[nodiscard]] std::size_t closingOf(std::size_t open);
    void findClosings();
    [[nodiscard]] std::vector<std::string_view> subcommandNames() const;
    /// Offset of the next token, or of the command's end.
    [[nodiscard]] std::size_t nextOffset() const;
    [[nodiscard]] std::string nextAsTyped() const;

    bool fail(std::string message, std::size_t offset);

    const TokenSequenceBase& sequence_;
    Tokens tokens_;
    CommandSpec& spec_;
    const CommandDescriptor& descriptor_;
    std::size_t at_ = 0;
    std::vector<std::size_t> closings_;  // of every token; empty until first needed
    std::optional<ParseError> error_;
};

}  // namespace vexa
