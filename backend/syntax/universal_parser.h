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

    // The structure: universal_parser.cc.
    bool parse();
    bool parseLeading();
    bool parseNext();
    bool parseSubcommand(const SubComDescriptor& descriptor, SubComList& list, const TokenInfoObj& keyword);
    bool parseGroupSubcommand(const GroupComDescriptor& group, const SubComDescriptor& descriptor,
                              const TokenInfoObj& keyword);
    void startGroup();
    bool parseBody(const SubComDescriptor& descriptor, SubComObj& result);
    void takeFreeTokens(SubComObj& result);
    bool parseParameter(const SubComDescriptor& descriptor, SubComObj& result,
                        const ParamDescriptor& parameter);
    bool takeValue(const SubComDescriptor& descriptor, const ParamDescriptor& parameter, bool equalsGiven,
                   Tokens& value);

    // The extent of values: parser_values.cc.
    bool takeBracketed(const ParamDescriptor& parameter, Tokens& value);
    bool takeParenthesised(const ParamDescriptor& parameter, bool equalsGiven, Tokens& value);
    Tokens takePlain(const SubComDescriptor& descriptor, const ParamDescriptor& parameter, bool equalsGiven);
    /// Index of what follows the next token, or the list that it opens.
    std::size_t behindItem();
    /// True for the forms whose value is exactly one token.
    [[nodiscard]] static bool takesOneToken(const ParamDescriptor& parameter);
    [[nodiscard]] bool atEnd() const { return at_ >= tokens_.size(); }
    [[nodiscard]] bool isAt(int operatorCode) const;
    /// True when the next token begins the parameter's value although no '=' stands before it.
    [[nodiscard]] bool beginsValue(const SubComDescriptor& descriptor,
                                   const ParamDescriptor& parameter) const;
    /// True when the next token ends the parameter's value, which has begun.
    [[nodiscard]] bool beginsNextParameter(const SubComDescriptor& descriptor) const;
    [[nodiscard]] bool endsValue(const SubComDescriptor& descriptor, const ParamDescriptor& parameter) const;
    [[nodiscard]] bool beginsSubcommand(std::size_t at) const;
    /// True at a slash before a subcommand's name.
    [[nodiscard]] bool endsSubcommand(std::size_t at) const;
    /// Index of the bracket that closes the one at `open`, or of the end of the command when none does before
    /// the next slash with a subcommand. Brackets and parentheses are matched each for themselves: commands
    /// report a wrong nesting in their own words.
    [[nodiscard]] std::size_t closingOf(std::size_t open);
    /// The same, looking at a few tokens only; nothing when that was not enough.
    [[nodiscard]] std::optional<std::size_t> findNearClosing(std::size_t open) const;
    void findClosings();
    /// Offset of the next token, or of the command's end.
    [[nodiscard]] std::size_t nextOffset() const;

    // Words for errors: parser_refusals.cc. Every refusal is false.
    bool refuseMissingValue(const SubComDescriptor& descriptor, const ParamDescriptor& parameter,
                            bool equalsGiven, std::size_t offset);
    bool refuseUnbracketed(const ParamDescriptor& parameter);
    bool refuseUnparenthesised(const ParamDescriptor& parameter);
    bool refuseParameter(const SubComDescriptor& descriptor, const SubComObj& result);
    /// Refuses the next token where the value before it explains it; true when it did.
    bool refuseBehindValue(const SubComDescriptor& descriptor, const SubComObj& result);
    bool refuseSlash(std::size_t offset);
    bool refuseSubcommand(const TokenInfoObj& word);
    bool checkRequired(const SubComDescriptor& descriptor, const SubComObj& result, std::size_t offset);
    bool checkRequiredSubcommands();
    [[nodiscard]] std::string nameOf(const SubComDescriptor& descriptor) const;
    [[nodiscard]] std::vector<std::string_view> subcommandNames() const;
    [[nodiscard]] std::string nextAsTyped() const;
    /// The sentence that says what stands next; empty at the end.
    [[nodiscard]] std::string foundNext() const;
    bool fail(std::string message, std::size_t offset);

    const TokenSequenceBase& sequence_;
    Tokens tokens_;
    CommandSpec& spec_;
    const CommandDescriptor& descriptor_;
    std::size_t at_ = 0;
    std::vector<std::size_t> closings_;  // of every token; empty until first needed
    std::optional<CommandError> error_;
    std::vector<CommandError> warnings_;
};

}  // namespace vexa
