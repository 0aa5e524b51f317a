// IF: narrows the items of a selection group by the command that made them, subtype, label and instance, and
// to visible ones.

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "backend/tokens/token_sequence.h"
#include "module/frame/xml_text.h"
#include "module/modify/modify_spec.h"
#include "module/modify/parameter_values.h"

namespace vexa {

namespace {

using Spec = UPSpecTypes::ParamSpec;
using Brackets = UPSpecTypes::BracketOptions;

constexpr QualifierRow kLabelModes[] = {{"EXACT", Spec::literals},
                                        {"BEGINS", Spec::literals},
                                        {"CONTAINS", Spec::literals},
                                        {"ENDS", Spec::literals}};
constexpr std::string_view kLast[] = {"LAST"};

constexpr auto kLabels =
    optionalParameter("LABELS", Spec::qualifiedLists).qualifiedBy(kLabelModes).bracketed(Brackets::required);

constexpr ParameterRow kParameters[] = {
    optionalParameter("COMMANDS", Spec::tokens, "['name' 'name(1,3)' 'name(LAST)' LAST ...]")
        .bracketed(Brackets::optional),
    optionalParameter("SUBTYPES", Spec::literals).bracketed(Brackets::required),
    kLabels,
    optionalParameter("INSTANCES", Spec::tokens, "{number|LAST} ...").of(kLast).bracketed(Brackets::required),
    {"VISIBLEONLY", Spec::word, false, false, kNoYes},
};

constexpr SubcommandRow kGrammar{"IF", UPSpecTypes::SubComSpec::keywordParameters, false, false, kParameters};

constexpr SystemText kUnbalanced = "Unbalanced parentheses in effect, parameter ^1, subcommand ^2 ..."_text;

/// Instances of a command beside the positive ones.
constexpr std::int32_t kEveryInstance = 0;
constexpr std::int32_t kLastInstance = -1;

struct CommandEntry {
    std::string name;
    std::int32_t instance = kEveryInstance;
};

struct LabelCriteria {
    std::vector<std::string> exact, begins, ends, contains;
};

struct SelectionCriteria {
    bool visibleOnly = false;
    std::vector<CommandEntry> commands;
    std::vector<std::string> subtypes;
    LabelCriteria labels;
    std::vector<std::int32_t> instances;
};

bool holdsOnly(std::string_view text, std::string_view characters) {
    return text.find_first_not_of(characters) == std::string_view::npos;
}

/// The fields between the commas: one more than there are commas.
std::vector<std::string_view> fieldsOf(std::string_view list) {
    std::vector<std::string_view> fields;
    const auto commas = std::count(list.begin(), list.end(), ',');
    for (auto i = commas; i >= 0; --i) {
        fields.push_back(takeField(list));
    }
    return fields;
}

/// The numbers of an instance list; a field of 0 or without digits is reported and left out.
std::vector<std::int32_t> readNumbers(std::string_view list, std::string_view literal,
                                      ParserMessage& messages) {
    std::vector<std::int32_t> numbers;
    for (const std::string_view field : fieldsOf(list)) {
        const std::int32_t number = leadingInteger(field);
        if (number == 0) {
            messages.ParamNeedInteger(literal, "IF");
        } else {
            numbers.push_back(number);
        }
    }
    return numbers;
}

/// What stands in parentheses behind a command's name: numbers, or LAST. Blanks alone are an empty field;
/// beside digits or commas they are characters like any other that no number has.
std::optional<std::vector<std::int32_t>> readInstanceList(std::string_view list, std::string_view literal,
                                                          ParserMessage& messages) {
    if (holdsOnly(list, "0123456789,") || holdsOnly(list, " ")) {
        return readNumbers(list, literal, messages);
    }
    if (AreStringsEqualCase(list, "LAST")) {
        return std::vector{kLastInstance};
    }
    messages.ParamNeedIntegerList(literal, "IF");
    return std::nullopt;
}

/// Name, Name(2), Name(1,3) or Name(LAST).
bool readCommand(std::string_view literal, ParserMessage& messages, SelectionCriteria& criteria) {
    const std::size_t open = literal.find('(');
    if (open == std::string_view::npos) {
        criteria.commands.push_back({std::string(literal)});
        return true;
    }
    std::string_view list = literal.substr(open + 1);
    if (list.size() < 2 || !list.ends_with(')')) {
        messages.GenericError(kUnbalanced, {"COMMANDS", "IF"});
        return false;
    }
    list.remove_suffix(1);
    auto instances = readInstanceList(list, literal, messages);
    if (!instances) {
        return false;
    }
    if (instances->empty()) {
        instances->push_back(kEveryInstance);
    }
    for (const std::int32_t instance : *instances) {
        criteria.commands.push_back({std::string(literal.substr(0, open)), instance});
    }
    return true;
}

/// What is neither a quoted name nor LAST nor a separator names no command.
bool isIgnored(const TokenInfoObj& token) {
    return !token.isLiteral() && !token.spells("LAST") &&
           token.getOperatorCode() != TokenSequenceBase::separator;
}

/// Warns of the ignored tokens from the first on, as they were typed, and gives how many they are.
std::size_t warnOfIgnored(std::span<const TokenInfoObj> tokens, ParserMessage& messages) {
    std::string text;
    std::size_t count = 0;
    std::size_t end = tokens.front().offset();
    for (; count < tokens.size() && isIgnored(tokens[count]); ++count) {
        text.append(tokens[count].offset() > end ? " " : "").append(tokens[count].getString());
        end = tokens[count].offset() + tokens[count].length();
    }
    messages.IgnoredParamValue("COMMANDS", "IF", text);
    return count;
}

bool readCommands(const ParamObj& commands, ParserMessage& messages, SelectionCriteria& criteria) {
    const std::span<const TokenInfoObj> tokens = commands.getTokenList();
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        if (isIgnored(tokens[i])) {
            i += warnOfIgnored(tokens.subspan(i), messages) - 1;
        } else if (tokens[i].spells("LAST")) {
            criteria.commands.push_back({"", kLastInstance});
        } else if (tokens[i].isLiteral() && !readCommand(tokens[i].getString(), messages, criteria)) {
            return false;
        }
    }
    return true;
}

void appendLiterals(const ParamObj& list, std::vector<std::string>& texts) {
    std::vector<std::string_view> literals;
    list.getLiterals(literals);
    texts.insert(texts.end(), literals.begin(), literals.end());
}

void readLabels(const ParamObj& given, LabelCriteria& labels) {
    const std::pair<std::string_view, std::vector<std::string>*> lists[] = {{"EXACT", &labels.exact},
                                                                            {"BEGINS", &labels.begins},
                                                                            {"CONTAINS", &labels.contains},
                                                                            {"ENDS", &labels.ends}};
    std::vector<QualifierObj> qualifiers;
    // The parser has refused every other shape.
    static_cast<void>(given.getQualifiers(describe(kLabels), qualifiers));
    for (const QualifierObj& qualifier : qualifiers) {
        for (const auto& [name, texts] : lists) {
            if (AreStringsEqualCase(qualifier.name(), name)) {
                appendLiterals(qualifier, *texts);
            }
        }
    }
}

void readInstances(const ParamObj& given, ParserMessage& messages, std::vector<std::int32_t>& instances) {
    for (const TokenInfoObj& token : given.getTokenList()) {
        if (const auto number = token.getIntegerValue()) {
            instances.push_back(*number);
        } else if (AreStringsEqualCase(token.getString(), "LAST")) {
            instances.push_back(kLastInstance);
        } else {
            // Names INSTANCE and not IF; this is meant.
            messages.InvalidParamValue(token.getString(), "INSTANCES", "INSTANCE");
        }
    }
}

bool read(const SubComObj& given, ParserMessage& messages, SelectionCriteria& criteria) {
    const ParamObj* const commands = given.getParamObj("COMMANDS");
    if (commands != nullptr && !readCommands(*commands, messages, criteria)) {
        return false;
    }
    if (const ParamObj* const subtypes = given.getParamObj("SUBTYPES")) {
        appendLiterals(*subtypes, criteria.subtypes);
    }
    if (const ParamObj* const labels = given.getParamObj("LABELS")) {
        readLabels(*labels, criteria.labels);
    }
    if (const ParamObj* const instances = given.getParamObj("INSTANCES")) {
        readInstances(*instances, messages, criteria.instances);
    }
    const ParamObj* const visibleOnly = given.getParamObj("VISIBLEONLY");
    criteria.visibleOnly = visibleOnly != nullptr && visibleOnly->isStringValueCase("YES");
    return true;
}

void writeCommand(const CommandEntry& command, std::string& request) {
    // The blank belongs to the tag: the name has none before it, and what follows has one more. This is
    // meant.
    request += "<command ";
    if (!command.name.empty()) {
        request += "commandName=\"" + toXmlUtf8(command.name) + '"';
    }
    if (command.instance == kLastInstance) {
        appendFlag(request, "last", true);
    } else if (command.instance != kEveryInstance) {
        appendInteger(request, "instance", command.instance);
    }
    request += "/>";
}

void writeLabels(const std::vector<std::string>& labels, std::string_view mode, std::string& request) {
    for (const std::string& label : labels) {
        request += "<label";
        appendText(request, "expression", label);
        appendFlag(request, mode, true);
        request += "/>";
    }
}

/// Names, subtypes and labels are not escaped; this is meant.
void write(const SelectionCriteria& criteria, std::string& request) {
    for (const CommandEntry& command : criteria.commands) {
        writeCommand(command, request);
    }
    for (const std::string& subtype : criteria.subtypes) {
        request += "<subtype";
        appendText(request, "subtype", subtype);
        request += "/>";
    }
    writeLabels(criteria.labels.exact, "exact", request);
    writeLabels(criteria.labels.begins, "begins", request);
    writeLabels(criteria.labels.ends, "ends", request);
    writeLabels(criteria.labels.contains, "contains", request);
    for (const std::int32_t instance : criteria.instances) {
        request += "<instance";
        // 0 and every negative number mean the last instance too.
        if (instance >= 1) {
            appendInteger(request, "instance", instance);
        } else {
            appendFlag(request, "last", true);
        }
        request += "/>";
    }
}

class CriteriaHandler : public SingleHandler<SelectionCriteria, SelectionHandler> {
  public:
    CriteriaHandler() : SingleHandler(kGrammar, vexa::read, vexa::write) {}

    [[nodiscard]] bool visibleOnly() const override { return settings() && settings()->visibleOnly; }
};

}  // namespace

std::unique_ptr<SelectionHandler> makeSelectionHandler() { return std::make_unique<CriteriaHandler>(); }

}  // namespace vexa
