#include "backend/syntax/value_check.h"

#include <algorithm>
#include <cstdio>
#include <utility>
#include <vector>

#include "backend/platform/character_set.h"
#include "backend/platform/text_width.h"
#include "backend/syntax/command_spec.h"
#include "backend/syntax/nearest_keyword.h"
#include "backend/syntax/qualifiers.h"

namespace vexa {

namespace {

using Spec = UPSpecTypes::ParamSpec;
using Tokens = std::span<const TokenInfoObj>;
using Result = std::optional<ValueError>;

/// Longest piece of a command that a message shows, in bytes.
constexpr std::size_t kShownLength = 48;

std::string formatBound(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

bool hasCode(const TokenInfoObj& token, int code) { return token.getOperatorCode() == code; }

/// True when the token at `place` is an opening parenthesis without a closing one.
bool opensUnclosed(Tokens value, std::size_t place) {
    std::size_t depth = 0;
    for (std::size_t i = place; i < value.size(); ++i) {
        if (hasCode(value[i], TokenSequenceBase::openParenthesis)) {
            ++depth;
        } else if (depth > 0 && hasCode(value[i], TokenSequenceBase::closeParenthesis)) {
            --depth;
        }
        if (depth == 0) {
            return false;
        }
    }
    return depth > 0;
}

std::vector<std::string_view> qualifierNames(const ParamDescriptor& parameter) {
    std::vector<std::string_view> names = parameter.stringValues();
    for (const ParamDescriptor& each : parameter.qualifiers()) {
        names.push_back(each.name());
    }
    return names;
}

std::string didYouMean(const TokenInfoObj& token, std::span<const std::string_view> candidates) {
    const std::string_view meant =
        token.isWordLike() ? nearestKeyword(token.getString(), candidates) : std::string_view();
    return meant.empty() ? "" : " Did you mean " + std::string(meant) + "?";
}

/// Checks of one parameter's value.
class ValueCheck {
  public:
    ValueCheck(const ParamDescriptor& parameter, const CommandText& command)
        : parameter_(parameter), command_(command) {}

    [[nodiscard]] Result check(Tokens value) const {
        switch (parameter_.spec()) {
            case Spec::keyword:
                return std::nullopt;
            case Spec::tokens:
                return parameter_.qualifiers().empty() ? std::nullopt : checkFreeQualifier(value);
            case Spec::word:
            case Spec::literalOrWord:
            case Spec::number:
            case Spec::integer:
                return checkSingle(value);
            case Spec::words:
            case Spec::literals:
            case Spec::numbers:
                return checkList(value);
            case Spec::qualifierList:
            case Spec::qualifiedValue:
            case Spec::qualifiedLists:
                return checkQualifiers(value);
        }
        return std::nullopt;
    }

  private:
    [[nodiscard]] Result checkSingle(Tokens value) const {
        if (value.size() > 1 && !parameter_.isCheckedByCommand()) {
            return ValueError{takes() + " Only one can be given; found " + asTyped(value[1], command_) +
                                  " behind the first.",
                              value[1].offset()};
        }
        return checkList(value);
    }

    [[nodiscard]] Result checkList(Tokens value) const {
        for (const TokenInfoObj& token : value) {
            if (Result error = parameter_.isCheckedByCommand() ? checkKind(token) : checkItem(token)) {
                return error;
            }
        }
        return std::nullopt;
    }

    /// Which word it is is the command's to judge; what is no word at all stays the parser's.
    [[nodiscard]] Result checkKind(const TokenInfoObj& token) const {
        const bool wrong = parameter_.spec() == Spec::words && !token.isWordLike() && !token.isLiteral();
        return wrong ? Result(refusal(token, parameter_.stringValues())) : std::nullopt;
    }

    [[nodiscard]] Result checkItem(const TokenInfoObj& token) const {
        if (!fits(token)) {
            return refusal(token, parameter_.stringValues());
        }
        return token.isNumber() ? checkBounds(token) : std::nullopt;
    }

    [[nodiscard]] bool fits(const TokenInfoObj& token) const {
        const bool known = token.isWordLike() && parameter_.hasStringValue(token.getString());
        switch (parameter_.spec()) {
            case Spec::word:
                return known || (!parameter_.hasStringValues() && (token.isWordLike() || token.isLiteral()));
            case Spec::literalOrWord:
                return token.isLiteral() || token.isWordLike();
            case Spec::words:
                return known;
            case Spec::literals:
                return token.isLiteral();
            case Spec::integer:
                return known || token.isInteger();
            default:
                return known || token.getDoubleValue().has_value();
        }
    }

    [[nodiscard]] Result checkBounds(const TokenInfoObj& token) const {
        const double value = token.getDoubleValue().value_or(0);
        const auto& lower = parameter_.lowerBoundary();
        const auto& upper = parameter_.upperBoundary();
        const auto allowsItself = [](const Boundary& bound) {
            return bound.option == UPSpecTypes::BoundaryOption::inclusive;
        };
        const bool tooLow = lower && (allowsItself(*lower) ? value < lower->value : value <= lower->value);
        const bool tooHigh = upper && (allowsItself(*upper) ? value > upper->value : value >= upper->value);
        return tooLow || tooHigh ? Result(refusal(token, {})) : std::nullopt;
    }

    /// Free tokens that read as one known qualifier: its bounds hold, every other rule is the command's.
    [[nodiscard]] Result checkFreeQualifier(Tokens value) const {
        const auto qualifier = ParamObj({}, nullptr, value).getQualifier();
        const ParamDescriptor* const known =
            qualifier ? parameter_.findQualifier(qualifier->name()) : nullptr;
        if (known == nullptr || known->isCheckedByCommand() || parameter_.isCheckedByCommand()) {
            return std::nullopt;
        }
        for (const TokenInfoObj& token : qualifier->getTokenList()) {
            if (Result error =
                    token.isNumber() ? ValueCheck(*known, command_).checkBounds(token) : std::nullopt) {
                return error;
            }
        }
        return std::nullopt;
    }

    [[nodiscard]] Result checkQualifiers(Tokens value) const {
        std::vector<QualifierObj> qualifiers;
        const auto stopped = readQualifiers(parameter_.spec(), value, qualifiers);
        if (stopped && opensUnclosed(value, *stopped)) {
            return ValueError{
                "The list of " + std::string(parameter_.name()) + " is not closed: \")\" is missing.",
                value[*stopped].offset()};
        }
        for (const QualifierObj& qualifier : qualifiers) {
            if (Result error = checkQualifier(qualifier)) {
                return error;
            }
        }
        return stopped ? refuseShape(value, *stopped) : std::nullopt;
    }

    /// A list in parentheses that cannot be read is refused even where the command checks its items.
    [[nodiscard]] Result refuseShape(Tokens value, std::size_t stopped) const {
        if (parameter_.isCheckedByCommand() && parameter_.spec() != Spec::qualifierList) {
            return std::nullopt;
        }
        if (stopped < value.size()) {
            return refusal(value[stopped], {});
        }
        std::optional<std::size_t> end;
        if (!value.empty()) {
            end = value.back().offset() + value.back().length();
        }
        return ValueError{takes(), end};
    }

    [[nodiscard]] Result checkQualifier(const QualifierObj& qualifier) const {
        const TokenInfoObj& name = *qualifier.keyword();
        const bool hasValue = qualifier.isTokenList();
        const ParamDescriptor* const known = parameter_.findQualifier(name.getString());
        if (parameter_.isCheckedByCommand() || (known != nullptr && known->isCheckedByCommand())) {
            return std::nullopt;
        }
        const bool bareKeyword =
            known == nullptr ? parameter_.hasStringValue(name.getString()) : known->spec() == Spec::keyword;
        if (known == nullptr && !bareKeyword) {
            return refusal(name, qualifierNames(parameter_));
        }
        if (bareKeyword) {
            return hasValue ? Result(ValueError{nameInCapitals(name) + " takes no value.", name.offset()})
                            : std::nullopt;
        }
        if (!hasValue && known->isValueRequired() && known->spec() != Spec::tokens) {
            return ValueError{std::string(known->name()) + " needs a value: " + describeValue(*known) + ".",
                              name.offset()};
        }
        return ValueCheck(*known, command_).check(qualifier.getTokenList());
    }

    [[nodiscard]] static std::string nameInCapitals(const TokenInfoObj& name) {
        return toUtf8(name.getUpperString());
    }

    [[nodiscard]] ValueError refusal(const TokenInfoObj& token,
                                     std::span<const std::string_view> candidates) const {
        return ValueError{
            takes() + " Found " + asTyped(token, command_) + "." + didYouMean(token, candidates),
            token.offset()};
    }

    [[nodiscard]] std::string takes() const {
        return std::string(parameter_.name()) + " takes " + describeValue(parameter_) + ".";
    }

    const ParamDescriptor& parameter_;
    const CommandText& command_;
};

std::string describeBounds(const ParamDescriptor& parameter) {
    std::string words;
    if (const auto& lower = parameter.lowerBoundary()) {
        const bool inclusive = lower->option == UPSpecTypes::BoundaryOption::inclusive;
        words += (inclusive ? " of at least " : " above ") + formatBound(lower->value);
    }
    if (const auto& upper = parameter.upperBoundary()) {
        const bool inclusive = upper->option == UPSpecTypes::BoundaryOption::inclusive;
        const std::string joint = words.empty() ? (inclusive ? " of" : "") : " and";
        words += joint + (inclusive ? " at most " : " below ") + formatBound(upper->value);
    }
    return words;
}

std::string describeNumber(const ParamDescriptor& parameter, const char* number) {
    const std::string words = number + describeBounds(parameter);
    const std::string keywords = listKeywords(parameter.stringValues());
    return keywords.empty() ? words : words + ", or " + keywords;
}

std::string listQualifiers(const ParamDescriptor& parameter) {
    return listKeywords(qualifierNames(parameter));
}

std::string firstQualifier(const ParamDescriptor& parameter) {
    return parameter.qualifiers().empty() ? "KEYWORD" : std::string(parameter.qualifiers().front().name());
}

/// "a file", "an encoding".
std::string withArticle(std::string_view label) {
    constexpr std::string_view kVowels = "aeio";
    return (kVowels.find(label.front()) == std::string_view::npos ? "a " : "an ") + std::string(label);
}

}  // namespace

std::optional<ValueError> checkValue(const ParamDescriptor& parameter, std::span<const TokenInfoObj> value,
                                     const CommandText& command) {
    return ValueCheck(parameter, command).check(value);
}

std::string describeValue(const ParamDescriptor& parameter) {
    const std::string keywords = listKeywords(parameter.stringValues());
    switch (parameter.spec()) {
        case Spec::keyword:
            return "nothing";
        case Spec::tokens:
            return parameter.valueLabel().empty() ? "a value" : withArticle(parameter.valueLabel());
        case Spec::word:
            return keywords.empty() ? "one word or one quoted text" : keywords;
        case Spec::literalOrWord:
            return keywords.empty() ? "one quoted text or one word" : "one quoted text, or " + keywords;
        case Spec::words:
            return "one or more of " + keywords;
        case Spec::literals:
            return "one or more quoted texts";
        case Spec::number:
            return describeNumber(parameter, "a number");
        case Spec::numbers:
            return describeNumber(parameter, parameter.lowerBoundary() || parameter.upperBoundary()
                                                 ? "one or more numbers, each"
                                                 : "one or more numbers");
        case Spec::integer:
            return describeNumber(parameter, "a whole number");
        case Spec::qualifierList:
            return "a list in parentheses, such as (" + firstQualifier(parameter) + "=...), of " +
                   listQualifiers(parameter);
        case Spec::qualifiedValue:
            return listQualifiers(parameter) + " with its value, such as " + firstQualifier(parameter) +
                   "(...)";
        case Spec::qualifiedLists:
            return listQualifiers(parameter) + ", each with a list in parentheses, such as " +
                   firstQualifier(parameter) + "('...')";
    }
    return "a value";
}

std::string asTyped(const TokenInfoObj& token, const CommandText& command) {
    const std::string_view typed = std::string_view(command.text).substr(token.offset(), token.length());
    const CharacterSet& set = currentCharacterSet();
    std::size_t end = 0;
    while (end < typed.size() && end < kShownLength) {
        end += std::max<std::size_t>(1, set.characterLength(typed.data() + end, typed.size() - end));
    }
    return '"' + printableText(toUtf8(typed.substr(0, end))) + (end < typed.size() ? "...\"" : "\"");
}

}  // namespace vexa
