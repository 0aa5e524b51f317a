#include "backend/syntax/value_check.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "backend/platform/character_set.h"
#include "backend/platform/text_width.h"
#include "backend/syntax/command_spec.h"
#include "backend/syntax/nearest_keyword.h"

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

bool isSeparator(const TokenInfoObj& token) {
    return token.getOperatorCode() == TokenSequenceBase::separator;
}

/// Checks of one parameter's value.
class ValueCheck {
  public:
    ValueCheck(const ParamDescriptor& parameter, const CommandText& command)
        : parameter_(parameter), command_(command) {}

    Result check(Tokens value) const {
        switch (parameter_.spec()) {
            case Spec::keyword:
            case Spec::tokens:
                return std::nullopt;
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
    Result checkSingle(Tokens value) const {
        if (value.size() > 1) {
            return ValueError{
                takes() + " Only one value can be given; found " + asTyped(value[1], command_) + ".",
                &value[1]};
        }
        return value.empty() ? std::nullopt : checkItem(value[0]);
    }

    Result checkList(Tokens value) const {
        for (const TokenInfoObj& token : value) {
            if (isSeparator(token)) {
                continue;
            }
            if (Result error = checkItem(token)) {
                return error;
            }
        }
        return std::nullopt;
    }

    Result checkItem(const TokenInfoObj& token) const {
        if (parameter_.isCheckedByCommand() && (!token.isOperator() || token.isWordLike())) {
            return std::nullopt;
        }
        if (fits(token)) {
            return token.isNumber() ? checkBounds(token) : std::nullopt;
        }
        std::string message = takes() + " Found " + asTyped(token, command_) + ".";
        if (token.isWordLike()) {
            const std::string_view meant = nearestKeyword(token.getString(), parameter_.stringValues());
            message += meant.empty() ? "" : " Did you mean " + std::string(meant) + "?";
        }
        return ValueError{message, &token};
    }

    [[nodiscard]] bool fits(const TokenInfoObj& token) const {
        const bool known = token.isWordLike() && parameter_.hasStringValue(token.getString());
        switch (parameter_.spec()) {
            case Spec::word:
                return known ||
                       (parameter_.stringValues().empty() && (token.isWordLike() || token.isLiteral()));
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
        const bool tooLow =
            lower && (lower->option == UPSpecTypes::BoundaryOption::inclusive ? value < lower->value
                                                                              : value <= lower->value);
        const bool tooHigh =
            upper && (upper->option == UPSpecTypes::BoundaryOption::inclusive ? value > upper->value
                                                                              : value >= upper->value);
        if (!tooLow && !tooHigh) {
            return std::nullopt;
        }
        return ValueError{takes() + " Found " + asTyped(token, command_) + ".", &token};
    }

    [[nodiscard]] Result checkQualifiers(Tokens value) const {
        std::vector<QualifierObj> qualifiers;
        if (!ParamObj({}, nullptr, value).getQualifiers(parameter_, qualifiers)) {
            return parameter_.isCheckedByCommand()
                       ? std::nullopt
                       : Result(ValueError{takes(), value.empty() ? nullptr : &value[0]});
        }
        for (const QualifierObj& qualifier : qualifiers) {
            if (Result error = checkQualifier(qualifier)) {
                return error;
            }
        }
        return std::nullopt;
    }

    [[nodiscard]] Result checkQualifier(const QualifierObj& qualifier) const {
        if (parameter_.isCheckedByCommand()) {
            return std::nullopt;
        }
        const TokenInfoObj& name = *qualifier.keyword();
        const bool hasValue = qualifier.isTokenList();
        const ParamDescriptor* const known = parameter_.findQualifier(name.getString());
        if (known == nullptr) {
            const bool bareKeyword = parameter_.hasStringValue(name.getString()) && !hasValue;
            return bareKeyword ? Result() : Result(unknownQualifier(name));
        }
        if (known->spec() == Spec::keyword && hasValue) {
            return ValueError{std::string(known->name()) + " takes no value.", &name};
        }
        if (known->spec() != Spec::keyword && known->spec() != Spec::tokens && !hasValue) {
            return ValueError{std::string(known->name()) + " needs a value: " + describeValue(*known) + ".", &name};
        }
        return ValueCheck(*known, command_).check(qualifier.getTokenList());
    }

    [[nodiscard]] ValueError unknownQualifier(const TokenInfoObj& name) const {
        std::vector<std::string_view> names = parameter_.stringValues();
        for (const ParamDescriptor& each : parameter_.qualifiers()) {
            names.push_back(each.name());
        }
        const std::string_view meant = nearestKeyword(name.getString(), names);
        return ValueError{takes() + " Found " + asTyped(name, command_) + "." +
                              (meant.empty() ? "" : " Did you mean " + std::string(meant) + "?"),
                          &name};
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
        words += std::string(words.empty() ? "" : " and") + (inclusive ? " at most " : " below ");
        words += formatBound(upper->value);
    }
    return words;
}

std::string describeNumber(const ParamDescriptor& parameter, const char* number) {
    const std::string words = number + describeBounds(parameter);
    const std::string keywords = listKeywords(parameter.stringValues());
    return keywords.empty() ? words : words + ", or " + keywords;
}

std::string listQualifiers(const ParamDescriptor& parameter) {
    std::vector<std::string_view> names = parameter.stringValues();
    for (const ParamDescriptor& each : parameter.qualifiers()) {
        names.push_back(each.name());
    }
    return listKeywords(names);
}

std::string firstQualifier(const ParamDescriptor& parameter) {
    return parameter.qualifiers().empty() ? "KEYWORD" : std::string(parameter.qualifiers().front().name());
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
            return "a value";
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
            return describeNumber(parameter, "one or more numbers, each");
        case Spec::integer:
            return describeNumber(parameter, "a whole number");
        case Spec::qualifierList:
            return "a list in parentheses, such as (" + firstQualifier(parameter) + "=...), of " +
                   listQualifiers(parameter);
        case Spec::qualifiedValue:
            return listQualifiers(parameter) + " with its value, such as " + firstQualifier(parameter) +
                   "(...)";
        case Spec::qualifiedLists:
            return listQualifiers(parameter) + ", each with a list in parentheses";
    }
    return "a value";
}

std::string asTyped(const TokenInfoObj& token, const CommandText& command) {
    const std::string_view typed = std::string_view(command.text).substr(token.offset(), token.length());
    std::string shown = printableText(toUtf8(typed.substr(0, kShownLength)));
    if (typed.size() > kShownLength) {
        shown += "...";
    }
    return '"' + shown + '"';
}

}  // namespace vexa
