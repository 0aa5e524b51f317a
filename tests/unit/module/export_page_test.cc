// The page of OUTPUT EXPORT tells analysts what the command takes. Its syntax table is held to the
// descriptors here, row by row: names, what a parameter takes, bounds.

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "backend/syntax/parse_mode.h"
#include "module/export/commands.h"
#include "tests/unit/module/command_fixture.h"

namespace vexa {
namespace {

using Spec = UPSpecTypes::ParamSpec;

constexpr std::string_view kHead = "| Subcommand | Parameter | Takes | Bounds |";

std::string word(std::string_view name) { return '`' + std::string(name) + '`'; }

std::string words(const ParamDescriptor& parameter) {
    std::string text;
    for (const std::string_view each : parameter.stringValues()) {
        text.append(text.empty() ? "" : " ").append(word(each));
    }
    return text;
}

/// "text: sheet", "whole number, `AUTOFIT`"; what a parameter of the kind `kind` takes.
std::string labelled(std::string_view kind, const ParamDescriptor& parameter) {
    std::string text(kind);
    if (!parameter.valueLabel().empty()) {
        text.append(": ").append(parameter.valueLabel());
    }
    if (parameter.hasStringValues()) {
        text.append(", ").append(words(parameter));
    }
    return text;
}

std::string taken(const ParamDescriptor& parameter);

std::string qualifiers(const ParamDescriptor& parameter) {
    std::string text;
    for (const ParamDescriptor& each : parameter.qualifiers()) {
        text.append(text.empty() ? "" : ", ").append(word(each.name()));
        if (each.spec() != Spec::keyword) {
            text.append(" (").append(taken(each)).append(")");
        }
    }
    return text;
}

std::string taken(const ParamDescriptor& parameter) {
    switch (parameter.spec()) {
        case Spec::tokens:
            return labelled("free", parameter);
        case Spec::word:
            return words(parameter);
        case Spec::literalOrWord:
            return labelled("text", parameter);
        case Spec::words:
            return "any of " + words(parameter);
        case Spec::number:
            return labelled("number", parameter);
        case Spec::numbers:
            return labelled("numbers", parameter);
        case Spec::integer:
            return labelled("whole number", parameter);
        case Spec::qualifiedValue:
            return qualifiers(parameter);
        case Spec::keyword:
        case Spec::literals:
        case Spec::qualifierList:
        case Spec::qualifiedLists:
            break;
    }
    return "a kind that the page does not know yet";
}

std::string bound(const Boundary& boundary, std::string_view inclusive, std::string_view exclusive) {
    std::array<char, 32> buffer{};
    const std::to_chars_result end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), boundary.value);
    const bool reachable = boundary.option == UPSpecTypes::BoundaryOption::inclusive;
    return std::string(reachable ? inclusive : exclusive).append(" ").append(buffer.data(), end.ptr);
}

/// "at least 0, at most 200"; of units, each with its own: "`PERCENT` above 0; `POINTS` above 0".
std::string bounds(const ParamDescriptor& parameter) {
    std::string text;
    if (parameter.lowerBoundary()) {
        text = bound(*parameter.lowerBoundary(), "at least", "above");
    }
    if (parameter.upperBoundary()) {
        text.append(text.empty() ? "" : ", ").append(bound(*parameter.upperBoundary(), "at most", "below"));
    }
    for (const ParamDescriptor& each : parameter.qualifiers()) {
        if (const std::string own = bounds(each); !own.empty()) {
            text.append(text.empty() ? "" : "; ").append(word(each.name())).append(" ").append(own);
        }
    }
    return text;
}

std::string row(const std::vector<std::string>& cells) {
    std::string line;
    for (const std::string& each : cells) {
        line.append(line.empty() ? "" : " | ").append(each);
    }
    return line + '\n';
}

std::string describedRows(const CommandDescriptor& command) {
    std::string rows;
    for (const SubComDescriptor& subcommand : command.subcommands()) {
        const std::string name = subcommand.name().empty() ? "(leading)" : word(subcommand.name());
        for (const ParamDescriptor& each : subcommand.parameters()) {
            rows += row({name, word(each.name()), taken(each), bounds(each)});
        }
    }
    return rows;
}

std::string trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// The cells of a line of a table; a stroke within a cell stands behind a backslash.
std::vector<std::string> cellsOf(const std::string& line) {
    std::vector<std::string> cells;
    std::string cell;
    for (std::size_t i = 1; i < line.size(); ++i) {  // behind the stroke that opens the line
        if (line[i] == '\\' && i + 1 < line.size() && line[i + 1] == '|') {
            cell += line[++i];
        } else if (line[i] == '|') {
            cells.push_back(trimmed(cell));
            cell.clear();
        } else {
            cell += line[i];
        }
    }
    return cells;
}

/// The rows below `kHead` and its rule.
std::string pageRows(const std::string& file) {
    std::ifstream page(file);
    std::string rows;
    std::string line;
    while (std::getline(page, line) && line != kHead) {
    }
    std::getline(page, line);
    while (std::getline(page, line) && !line.empty() && line.front() == '|') {
        rows += row(cellsOf(line));
    }
    return rows;
}

class ExportPage : public CommandFixture {
  protected:
    ExportPage() {
        const ParseModeScope mode(ParseMode::describe);
        run(outputExport, "");
        command = mode.description();
    }

    std::optional<CommandDescriptor> command;
};

TEST_F(ExportPage, HasTheRowsOfTheDescriptors) {
    ASSERT_TRUE(command);
    const std::string described = describedRows(*command);
    ASSERT_FALSE(described.empty());
    EXPECT_EQ(pageRows(VEXA_EXPORT_PAGE), described);
}

// The page says so once, below its table, and not in each row.
TEST_F(ExportPage, IsRightThatNothingIsRequiredOrMayRepeat) {
    ASSERT_TRUE(command);
    EXPECT_TRUE(command->groups().empty());
    for (const SubComDescriptor& subcommand : command->subcommands()) {
        EXPECT_FALSE(subcommand.isRequired()) << subcommand.name();
        EXPECT_FALSE(subcommand.isRepeatable()) << subcommand.name();
        EXPECT_EQ(subcommand.spec(), UPSpecTypes::SubComSpec::keywordParameters) << subcommand.name();
        for (const ParamDescriptor& each : subcommand.parameters()) {
            EXPECT_FALSE(each.isRequired()) << subcommand.name() << ' ' << each.name();
            EXPECT_EQ(each.brackets(), UPSpecTypes::BracketOptions::none) << each.name();
        }
    }
}

TEST_F(ExportPage, IsRightThatTheCommandItselfRefusesNumbersOutOfBounds) {
    ASSERT_TRUE(command);
    for (const SubComDescriptor& subcommand : command->subcommands()) {
        for (const ParamDescriptor& each : subcommand.parameters()) {
            const std::vector<ParamDescriptor>& units = each.qualifiers();
            const bool unitsLeft = std::any_of(units.begin(), units.end(), [](const ParamDescriptor& unit) {
                return unit.isCheckedByCommand();
            });
            if (!bounds(each).empty()) {
                EXPECT_TRUE(each.isCheckedByCommand() || unitsLeft) << each.name();
            }
        }
    }
}

}  // namespace
}  // namespace vexa
