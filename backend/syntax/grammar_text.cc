#include "backend/syntax/grammar_text.h"

#include <charconv>
#include <vector>

#include "backend/text/character_set.h"

namespace vexa {

namespace {

using Spec = UPSpecTypes::ParamSpec;

std::string indented(std::size_t depth, std::string_view text) {
    return std::string(depth, ' ').append(text);
}

std::string numberText(double value) {
    char buffer[32];
    const std::to_chars_result written = std::to_chars(buffer, buffer + sizeof buffer, value);
    return {buffer, written.ptr};
}

/// The string values as one choice, or what a value of that kind is called.
std::string choice(const ParamDescriptor& parameter, std::string_view otherwise) {
    const std::vector<std::string_view>& values = parameter.stringValues();
    if (values.empty()) {
        return std::string(parameter.valueLabel().empty() ? otherwise : parameter.valueLabel());
    }
    std::string text;
    for (const std::string_view value : values) {
        text.append(text.empty() ? "" : "|").append(value);
    }
    return values.size() == 1 ? text : '{' + text + '}';
}

/// A quoted text, by the name of the value, and the words that may stand in its place.
std::string literal(const ParamDescriptor& parameter) {
    const std::string_view label = parameter.valueLabel().empty() ? "text" : parameter.valueLabel();
    std::string text = '\'' + std::string(label) + '\'';
    if (!parameter.hasStringValues()) {
        return text;
    }
    for (const std::string_view value : parameter.stringValues()) {
        text.append("|").append(value);
    }
    return '{' + text + '}';
}

/// String values do not bound free tokens, so a label says more.
std::string freeTokens(const ParamDescriptor& parameter) {
    const std::string_view label = parameter.valueLabel();
    if (label == kNoValueLabel) {
        return {};
    }
    // A file is hardly ever one word, so it is shown as it is written.
    return label == "file" ? literal(parameter)
           : label.empty() ? choice(parameter, "value")
                           : std::string(label);
}

/// A number, and the keywords that may stand in its place.
std::string numberOrKeyword(const ParamDescriptor& parameter, std::string_view number) {
    std::string text(parameter.valueLabel().empty() ? number : parameter.valueLabel());
    if (!parameter.hasStringValues()) {
        return text;
    }
    for (const std::string_view value : parameter.stringValues()) {
        text.append("|").append(value);
    }
    return '{' + text + '}';
}

std::string joinQualifiers(const ParamDescriptor& parameter, std::string_view separator);

/// What stands for the value alone.
std::string valueText(const ParamDescriptor& parameter) {
    switch (parameter.spec()) {
        case Spec::keyword:
            return {};
        case Spec::tokens:
            return freeTokens(parameter);
        case Spec::word:
            return choice(parameter, "word");
        case Spec::literalOrWord:
            return literal(parameter);
        case Spec::words:
            return choice(parameter, "word") + " ...";
        case Spec::literals:
            return literal(parameter) + " ...";
        case Spec::number:
            return numberOrKeyword(parameter, "number");
        case Spec::numbers:
            return parameter.valueLabel().empty() ? numberOrKeyword(parameter, "number") + " ..."
                                                  : std::string(parameter.valueLabel());
        case Spec::integer:
            return numberOrKeyword(parameter, "integer");
        case Spec::qualifierList:
            return '(' + joinQualifiers(parameter, " ") + ')';
        case Spec::qualifiedValue:
            return '{' + joinQualifiers(parameter, "|") + '}';
        case Spec::qualifiedLists:
            return joinQualifiers(parameter, " ");
    }
    return {};
}

/// One qualifier of a value of the form `spec`.
std::string qualifierText(const ParamDescriptor& qualifier, Spec spec) {
    const std::string value = valueText(qualifier);
    std::string text(qualifier.name());
    if (!value.empty()) {
        text += spec == Spec::qualifierList ? '=' + value : '(' + value + ')';
    }
    return qualifier.isRequired() || spec == Spec::qualifiedValue ? text : '[' + text + ']';
}

std::string joinQualifiers(const ParamDescriptor& parameter, std::string_view separator) {
    std::string text;
    for (const ParamDescriptor& qualifier : parameter.qualifiers()) {
        text.append(text.empty() ? "" : separator).append(qualifierText(qualifier, parameter.spec()));
    }
    return text;
}

std::string withBrackets(const ParamDescriptor& parameter, std::string value) {
    switch (parameter.brackets()) {
        case UPSpecTypes::BracketOptions::required:
            return "\"[\"" + value + "\"]\"";
        case UPSpecTypes::BracketOptions::optional:
        case UPSpecTypes::BracketOptions::none:
            break;
    }
    return value;
}

/// "  (above 0, at most 100)", or nothing without bounds.
std::string boundsText(const ParamDescriptor& parameter) {
    const auto describe = [](const std::optional<Boundary>& bound, const char* with, const char* without) {
        const bool inclusive = bound->option == UPSpecTypes::BoundaryOption::inclusive;
        return (inclusive ? with : without) + numberText(bound->value);
    };
    std::string text;
    if (parameter.lowerBoundary()) {
        text = describe(parameter.lowerBoundary(), "at least ", "above ");
    }
    if (parameter.upperBoundary()) {
        text.append(text.empty() ? "" : ", ")
            .append(describe(parameter.upperBoundary(), "at most ", "below "));
    }
    return text.empty() ? text : "   (" + text + ")";
}

std::string parameterText(const ParamDescriptor& parameter) {
    std::string value = withBrackets(parameter, valueText(parameter));
    if (parameter.name().empty()) {
        return value;  // free tokens, described for help alone
    }
    std::string text(parameter.name());
    if (!value.empty()) {
        const bool attached = parameter.spec() == Spec::qualifierList;
        text.append(attached ? "" : "=");
        text += parameter.isValueRequired() ? value : '[' + value + ']';
    }
    return (parameter.isRequired() ? text : '[' + text + ']') + boundsText(parameter);
}

/// The lines of a subcommand, without the last line end.
std::string subcommandText(const SubComDescriptor& subcommand, std::size_t depth) {
    const bool unnamed = subcommand.name().empty();
    std::vector<std::string> lines;
    if (!unnamed) {
        lines.push_back(
            indented(depth, (subcommand.isRequired() ? "/" : "[/") + std::string(subcommand.name())));
    }
    const std::size_t inner = unnamed ? depth : depth + 3;
    const bool free = subcommand.spec() == UPSpecTypes::SubComSpec::freeTokens;
    if (free && !unnamed && !subcommand.parameters().empty()) {
        return lines.front() + '=' + parameterText(subcommand.parameters().front()) +
               (subcommand.isRequired() ? "" : "]");
    }
    for (const ParamDescriptor& parameter : subcommand.parameters()) {
        lines.push_back(indented(inner, parameterText(parameter)));
    }
    if (free && subcommand.parameters().empty()) {
        lines.push_back(indented(inner, subcommand.isRequired() ? "value ..." : "[value ...]"));
    }
    std::string text;
    for (const std::string& line : lines) {
        text.append(text.empty() ? "" : "\n").append(line);
    }
    if (!unnamed) {
        text.append(subcommand.isRequired() ? "" : "]").append(subcommand.isRepeatable() ? " ..." : "");
    }
    return text;
}

std::string groupText(const GroupComDescriptor& group) {
    std::string text = group.isRequired() ? "  one or more groups of:\n" : "  any number of groups of:\n";
    for (const SubComDescriptor& subcommand : group.subcommands()) {
        text += subcommandText(subcommand, 4) + '\n';
    }
    return text;
}

/// What a subcommand has under the name `part`: itself or one of its parameters.
std::string partText(const SubComDescriptor& subcommand, std::string_view part) {
    if (equalsIgnoringCase(subcommand.name(), part)) {
        return subcommandText(subcommand, 2) + '\n';
    }
    const ParamDescriptor* const parameter = subcommand.findParameter(part);
    if (parameter == nullptr) {
        return {};
    }
    const std::string owner = subcommand.name().empty() ? "" : '/' + std::string(subcommand.name()) + ' ';
    return "  " + owner + parameterText(*parameter) + '\n';
}

}  // namespace

std::string grammarText(const CommandDescriptor& command) {
    std::string text(command.name());
    text += '\n';
    for (const SubComDescriptor& subcommand : command.subcommands()) {
        const std::string lines = subcommandText(subcommand, 2);
        text += lines.empty() ? lines : lines + '\n';
    }
    for (const GroupComDescriptor& group : command.groups()) {
        text += groupText(group);
    }
    return text;
}

std::optional<std::string> grammarText(const CommandDescriptor& command, std::string_view part) {
    std::string text;
    for (const SubComDescriptor& subcommand : command.subcommands()) {
        text += partText(subcommand, part);
    }
    for (const GroupComDescriptor& group : command.groups()) {
        for (const SubComDescriptor& subcommand : group.subcommands()) {
            text += partText(subcommand, part);
        }
    }
    if (text.empty()) {
        return std::nullopt;
    }
    return std::string(command.name()) + '\n' + text;
}

}  // namespace vexa
