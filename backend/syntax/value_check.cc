#include "backend/syntax/value_check.h"

#include <algorithm>
#include <cstdio>
#include <utility>
#include <vector>

#include "backend/strings/dictionary.h"
#include "backend/syntax/command_spec.h"
#include "backend/syntax/nearest_keyword.h"
#include "backend/syntax/qualifiers.h"
#include "backend/syntax/refusal_texts.h"
#include "backend/text/character_set.h"
#include "backend/text/text_width.h"

namespace vexa {

namespace {

using Spec = UPSpecTypes::ParamSpec;
using Tokens = std::span<const TokenInfoObj>;
using Result = std::optional<ValueError>;

/// Longest piece of a command that a message shows, in bytes.
constexpr std::size_t kShownLength = 48;

constexpr SystemText kTakesNoValue = "^1 takes no value."_text;
constexpr SystemText kUnquoted = "Without quotes, this word is not taken as text."_text;

std::string formatBound(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

/// True when the token at `place` is an opening parenthesis without a closing one.
bool opensUnclosed(Tokens value, std::size_t place) {
    std::size_t depth = 0;
    for (std::size_t i = place; i < value.size(); ++i) {
        if (value[i].getOperatorCode() == TokenSequenceBase::openParenthesis) {
            ++depth;
        } else if (depth > 0 && value[i].getOperatorCode() == TokenSequenceBase::closeParenthesis) {
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
            return ValueError{sentences({takes(), onlyOne(value[1], command_)}), value[1].offset()};
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
            return ValueError{composed(texts::kListNotClosed, {std::string(parameter_.name()), ")"}),
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
        const bool noNumber = known != nullptr && known->spec() == Spec::number && !hasValue;
        if (parameter_.isCheckedByCommand() ||
            (known != nullptr && known->isCheckedByCommand() && !noNumber)) {
            return std::nullopt;  // a number that is not there is nothing that the command could check
        }
        const bool bareKeyword =
            known == nullptr ? parameter_.hasStringValue(name.getString()) : known->spec() == Spec::keyword;
        if (known == nullptr && !bareKeyword) {
            return refusal(name, qualifierNames(parameter_));
        }
        if (bareKeyword) {
            return hasValue
                       ? Result(ValueError{composed(kTakesNoValue, {nameInCapitals(name)}), name.offset()})
                       : std::nullopt;
        }
        if (!hasValue && known->isValueRequired() && known->spec() != Spec::tokens) {
            return ValueError{
                composed(texts::kNeedsValue, {std::string(known->name()), describeValue(*known)}),
                name.offset()};
        }
        return ValueCheck(*known, command_).check(qualifier.getTokenList());
    }

    [[nodiscard]] static std::string nameInCapitals(const TokenInfoObj& name) {
        return toUtf8(name.getUpperString());
    }

    [[nodiscard]] ValueError refusal(const TokenInfoObj& token,
                                     std::span<const std::string_view> candidates) const {
        return ValueError{sentences({takes(), composed(texts::kFound, {asTyped(token, command_)}),
                                     didYouMean(token, candidates)}),
                          token.offset()};
    }

    [[nodiscard]] std::string takes() const { return whatItTakes(parameter_); }

    const ParamDescriptor& parameter_;
    const CommandText& command_;
};

/// What a number must be, by which bounds it has; empty for none.
SystemText expectedBounds(const ParamDescriptor& parameter) {
    const auto kind = [](const std::optional<Boundary>& bound) {
        if (!bound) {
            return 0;
        }
        return bound->option == UPSpecTypes::BoundaryOption::inclusive ? 1 : 2;
    };
    static constexpr SystemText kTexts[3][3] = {
        {SystemText(), "^1 of at most ^3"_text, "^1 below ^3"_text},
        {"^1 of at least ^2"_text, "^1 of at least ^2 and at most ^3"_text,
         "^1 of at least ^2 and below ^3"_text},
        {"^1 above ^2"_text, "^1 above ^2 and at most ^3"_text, "^1 above ^2 and below ^3"_text},
    };
    return kTexts[kind(parameter.lowerBoundary())][kind(parameter.upperBoundary())];
}

std::string describeNumber(const ParamDescriptor& parameter, SystemText number) {
    const auto bound = [](const std::optional<Boundary>& given) {
        return given ? formatBound(given->value) : std::string();
    };
    std::string words = translated(number);
    if (const SystemText bounds = expectedBounds(parameter); !bounds.empty()) {
        words = composed(bounds, {words, bound(parameter.lowerBoundary()), bound(parameter.upperBoundary())});
    }
    const std::string keywords = listKeywords(parameter.stringValues());
    return keywords.empty() ? words : composed("^1, or ^2"_text, {std::move(words), keywords});
}

std::string listQualifiers(const ParamDescriptor& parameter) {
    return listKeywords(qualifierNames(parameter));
}

std::string firstQualifier(const ParamDescriptor& parameter) {
    return parameter.qualifiers().empty() ? "KEYWORD" : std::string(parameter.qualifiers().front().name());
}

/// True when the command reads the value.
bool isRead(const ParamDescriptor& parameter, Tokens value) {
    using Read = UPSpecTypes::ReadValue;
    if (value.size() != 1) {
        return false;
    }
    const TokenInfoObj& token = value.front();
    switch (parameter.readValue()) {
        case Read::everything:
            return true;
        case Read::text:
            return token.isLiteral() || token.isWordLike();
        case Read::textButAll:
            return token.isLiteral() || token.isWord();
        case Read::textOrOperator:
            return !token.isNumber();
        case Read::quotedTextOrOwnKeyword:
            return token.isLiteral() || parameter.hasStringValue(token.getString());
    }
    return true;
}

/// What a value that is any tokens is called.
std::string describeTokens(std::string_view label) {
    static constexpr struct {
        std::string_view label;
        SystemText text;
    } kKinds[] = {
        {"file", "a file"_text},     {"folder", "a folder"_text},
        {"name", "a name"_text},     {"text", "a text"_text},
        {"title", "a title"_text},   {"width", "a width"_text},
        {"format", "a format"_text}, {"font family", "a font family"_text},
    };
    for (const auto& kind : kKinds) {
        if (kind.label == label) {
            return translated(kind.text);
        }
    }
    return translated("a value"_text);
}

}  // namespace

std::optional<ValueError> checkValue(const ParamDescriptor& parameter, std::span<const TokenInfoObj> value,
                                     const CommandText& command) {
    return ValueCheck(parameter, command).check(value);
}

std::optional<ValueError> checkRead(const ParamDescriptor& parameter, std::span<const TokenInfoObj> value,
                                    const CommandText& command) {
    const bool named = parameter.readValue() == UPSpecTypes::ReadValue::quotedTextOrOwnKeyword;
    if (parameter.readValue() == UPSpecTypes::ReadValue::everything || isRead(parameter, value)) {
        return std::nullopt;
    }
    ParamDescriptor text(parameter.name(), Spec::literalOrWord, false, true);
    if (named) {
        text = parameter;
    }
    if (value.empty()) {
        return ValueError{composed(texts::kNeedsValue, {std::string(parameter.name()), describeValue(text)}),
                          {}};
    }
    // A bracket that opens a list is itself what does not fit.
    std::optional<ValueError> error = checkValue(text, value.first(1), command);
    if (!error) {
        error = checkValue(text, value, command);
    }
    if (!error) {  // a word, and only the quotes are missing
        error = ValueError{sentences({whatItTakes(text), translated(kUnquoted)}), value.front().offset()};
    }
    appendSentence(error->message, translated("The value is ignored."_text));
    return error;
}

std::string describeValue(const ParamDescriptor& parameter) {
    const std::string keywords = listKeywords(parameter.stringValues());
    switch (parameter.spec()) {
        case Spec::keyword:
            return translated("nothing"_text);
        case Spec::tokens:
            return describeTokens(parameter.valueLabel());
        case Spec::word:
            return keywords.empty() ? translated("one word or one quoted text"_text) : keywords;
        case Spec::literalOrWord:
            return keywords.empty() ? translated("one quoted text or one word"_text)
                                    : composed("one quoted text, or ^1"_text, {keywords});
        case Spec::words:
            return composed("one or more of ^1"_text, {keywords});
        case Spec::literals:
            return translated("one or more quoted texts"_text);
        case Spec::number:
            return describeNumber(parameter, "a number"_text);
        case Spec::numbers:
            return describeNumber(parameter, parameter.lowerBoundary() || parameter.upperBoundary()
                                                 ? "one or more numbers, each"_text
                                                 : "one or more numbers"_text);
        case Spec::integer:
            return describeNumber(parameter, "a whole number"_text);
        case Spec::qualifierList:
            return composed("a list in parentheses, such as (^1=...), of ^2"_text,
                            {firstQualifier(parameter), listQualifiers(parameter)});
        case Spec::qualifiedValue:
            return composed("^2 with its value, such as ^1(...)"_text,
                            {firstQualifier(parameter), listQualifiers(parameter)});
        case Spec::qualifiedLists:
            return composed("^2, each with a list in parentheses, such as ^1('...')"_text,
                            {firstQualifier(parameter), listQualifiers(parameter)});
    }
    return translated("a value"_text);
}

std::string whatItTakes(const ParamDescriptor& parameter) {
    return composed("^1 takes ^2."_text, {std::string(parameter.name()), describeValue(parameter)});
}

std::string onlyOne(const TokenInfoObj& second, const CommandText& command) {
    return composed("Only one can be given; found ^1 after the first."_text, {asTyped(second, command)});
}

std::string didYouMean(const TokenInfoObj& token, std::span<const std::string_view> candidates) {
    const std::string_view meant =
        token.isWordLike() ? nearestKeyword(token.getString(), candidates) : std::string_view();
    return meant.empty() ? std::string() : composed(texts::kDidYouMean, {std::string(meant)});
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
