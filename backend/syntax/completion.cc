#include "backend/syntax/completion.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "backend/text/character_set.h"
#include "backend/tokens/token_sequence.h"

namespace vexa {

namespace {

using Tokens = std::span<const TokenInfoObj>;

/// Follows the tokens of a command that is being written, to know where its end stands.
class Position {
  public:
    Position(const CommandDescriptor& descriptor, Tokens tokens) : descriptor_(descriptor) {
        subcommand_ = descriptor.findSubcommand("");
        for (const TokenInfoObj& token : tokens) {
            advance(token);
        }
    }

    [[nodiscard]] std::vector<std::string_view> candidates() const {
        if (last_ == TokenSequenceBase::slash && depth_ == 0) {
            return subcommandNames();
        }
        if (parameter_ != nullptr && depth_ > 0) {
            return qualifier_ != nullptr ? qualifier_->stringValues() : names(parameter_->qualifiers());
        }
        if (parameter_ != nullptr && last_ == TokenSequenceBase::equalsSign) {
            return parameter_->qualifiers().empty() ? parameter_->stringValues()
                                                    : names(parameter_->qualifiers());
        }
        return subcommand_ == nullptr ? std::vector<std::string_view>() : remainingParameters();
    }

  private:
    void advance(const TokenInfoObj& token) {
        const int code = token.getOperatorCode();
        if (code == TokenSequenceBase::openParenthesis || code == TokenSequenceBase::openBracket) {
            ++depth_;
        } else if (code == TokenSequenceBase::closeParenthesis || code == TokenSequenceBase::closeBracket) {
            depth_ = std::max(0, depth_ - 1);
            qualifier_ = nullptr;
        } else if (token.isWordLike()) {
            takeWord(token.getString());
        } else if (code == 0) {
            qualifier_ = nullptr;  // a literal or a number is a value, and the value is over
        }
        last_ = code;
    }

    void takeWord(std::string_view word) {
        if (last_ == TokenSequenceBase::slash && depth_ == 0) {
            subcommand_ = findSubcommand(word);
            parameter_ = nullptr;
            given_.clear();
        } else if (parameter_ != nullptr && (depth_ > 0 || last_ == TokenSequenceBase::equalsSign)) {
            const bool isValue = qualifier_ != nullptr && last_ == TokenSequenceBase::equalsSign;
            qualifier_ = isValue ? nullptr : parameter_->findQualifier(word);
        } else if (subcommand_ != nullptr) {
            parameter_ = subcommand_->findParameter(word);
            if (parameter_ != nullptr) {
                given_.push_back(parameter_);
            }
        }
    }

    [[nodiscard]] const SubComDescriptor* findSubcommand(std::string_view name) const {
        const SubComDescriptor* found = descriptor_.findSubcommand(name);
        for (const GroupComDescriptor& group : descriptor_.groups()) {
            found = found == nullptr ? group.findSubcommand(name) : found;
        }
        return found;
    }

    static std::vector<std::string_view> names(const std::vector<ParamDescriptor>& parameters) {
        std::vector<std::string_view> result;
        result.reserve(parameters.size());
        for (const ParamDescriptor& parameter : parameters) {
            result.push_back(parameter.name());
        }
        return result;
    }

    [[nodiscard]] std::vector<std::string_view> remainingParameters() const {
        std::vector<std::string_view> result;
        for (const ParamDescriptor& parameter : subcommand_->parameters()) {
            const bool given = std::find(given_.begin(), given_.end(), &parameter) != given_.end();
            if (!given && !parameter.name().empty()) {
                result.push_back(parameter.name());
            }
        }
        return result;
    }

    [[nodiscard]] std::vector<std::string_view> subcommandNames() const {
        std::vector<std::string_view> result;
        const auto add = [&result](const std::vector<SubComDescriptor>& subcommands) {
            for (const SubComDescriptor& subcommand : subcommands) {
                if (!subcommand.name().empty()) {
                    result.push_back(subcommand.name());
                }
            }
        };
        add(descriptor_.subcommands());
        for (const GroupComDescriptor& group : descriptor_.groups()) {
            add(group.subcommands());
        }
        return result;
    }

    const CommandDescriptor& descriptor_;
    const SubComDescriptor* subcommand_ = nullptr;
    const ParamDescriptor* parameter_ = nullptr;
    const ParamDescriptor* qualifier_ = nullptr;
    std::vector<const ParamDescriptor*> given_;
    int last_ = 0;   // operator code of the last token
    int depth_ = 0;  // of parentheses and brackets
};

}  // namespace

Completion completeCommand(const CommandDescriptor& descriptor, const CommandText& command) {
    const CommandTokens sequence(command);
    Completion completion{command.text.size(), {}};
    if (sequence.error()) {
        return completion;
    }
    Tokens tokens = sequence.tokens();
    std::string prefix;
    if (!tokens.empty() && tokens.back().isWordLike() &&
        tokens.back().offset() + tokens.back().length() == command.text.size()) {
        prefix = tokens.back().getUpperString();
        completion.from = tokens.back().offset();
        tokens = tokens.first(tokens.size() - 1);
    }
    for (const std::string_view candidate : Position(descriptor, tokens).candidates()) {
        if (candidate.starts_with(prefix)) {
            completion.candidates.emplace_back(candidate);
        }
    }
    return completion;
}

}  // namespace vexa
