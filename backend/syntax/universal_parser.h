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

/// Why a command was refused, at a token or, for null, at the command's end.
struct ParseError {
    std::string message;  ///< UTF-8
    std::size_t offset = 0;
};

/// Fills a `CommandSpec` from tokens. All three must outlive the parser; the results refer to the tokens.
class UniversalParser {
  public:
    UniversalParser(const TokenSequenceBase& tokens, CommandSpec& spec, const CommandDescriptor& descriptor);

    /// Parses the whole command. 0 on success; otherwise the first error has been reported into the output log, with its
    /// place, and the results hold what came before it. See parse_mode.h for what else makes it answer non-zero.
    int getCommandSpecifications();

  private:
    using Parameter = const ParamDescriptor*;

    struct OpenSubcommand;

    bool parse();
    bool parseLeading();
    bool parseNext();
    SubComObj* open(const SubComDescriptor& descriptor, const TokenInfoObj& keyword);
    bool checkRepetition(const SubComDescriptor& descriptor, const SubComList& list, const TokenInfoObj& keyword);
    bool parseBody(const SubComDescriptor& descriptor, SubComObj& result);
    bool parseFreeTokens(SubComObj& result);
    bool parseParameters(const SubComDescriptor& descriptor, SubComObj& result);
    bool parseParameter(const SubComDescriptor& descriptor, SubComObj& result, const ParamDescriptor& parameter);
    bool takeValue(const SubComDescriptor& descriptor, const ParamDescriptor& parameter, const TokenInfoObj& keyword,
                   bool equalsGiven, std::span<const TokenInfoObj>& value);
    bool refuseUnknown(const SubComDescriptor& descriptor);
    bool checkRequired(const SubComDescriptor& descriptor, const SubComObj& result);
    bool checkRequiredSubcommands();

    [[nodiscard]] bool atEnd() const { return at_ >= tokens_.size(); }
    [[nodiscard]] const TokenInfoObj& token(std::size_t ahead = 0) const { return tokens_[at_ + ahead]; }
    [[nodiscard]] bool atSlash() const;
    [[nodiscard]] const SubComDescriptor* findSubcommand(const TokenInfoObj& word) const;
    [[nodiscard]] bool beginsSubcommand(std::size_t at) const;
    [[nodiscard]] bool endsValue(const SubComDescriptor& descriptor, std::size_t at, bool first, bool equalsGiven) const;
    [[nodiscard]] std::size_t closingOf(std::size_t at) const;
    [[nodiscard]] std::size_t endOffset() const;

    bool fail(std::string message);
    bool fail(std::string message, const TokenInfoObj& at);
    bool fail(std::string message, std::size_t offset);

    const TokenSequenceBase& sequence_;
    std::span<const TokenInfoObj> tokens_;
    CommandSpec& spec_;
    const CommandDescriptor& descriptor_;
    std::size_t at_ = 0;
    GroupComObj* group_ = nullptr;
    std::optional<ParseError> error_;
};

}  // namespace vexa
