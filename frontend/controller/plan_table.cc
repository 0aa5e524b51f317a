#include "frontend/controller/plan_table.h"

#include <algorithm>
#include <string_view>

#include "backend/pivot/bp_procedure.h"
#include "backend/strings/dictionary.h"
#include "frontend/controller/log_messages.h"
#include "frontend/controller/messages.h"

namespace vexa::frontend {

namespace {

/// Stands for the heading of the command that runs, which belongs to the command.
struct RunningHeading : BpHeading {};

constexpr int kind = 2;
constexpr int rows = 0;
constexpr int columns = 1;

void append(std::string& list, std::string_view separator, const std::string& text) {
    if (!list.empty()) list += separator;
    list += text;
}

std::string changesOf(const PlannedItem& item) {
    std::string list;
    for (const ChangeKind each : item.plan.changes) append(list, ", ", translated(changeText(each)));
    return list;
}

std::string reasonsOf(const PlannedItem& item) {
    std::string list;
    for (const PassedOver& each : item.plan.passedOver) append(list, " ", translated(each.reason));
    const bool isSame = item.selected && item.plan.changes.empty() && list.empty();
    return isSame ? translated(messages::isSoAlready) : list;
}

void addRow(BpDimension& groups, BpDimension& items, BpDimension& columnsOfPlan, const PlannedItem& item) {
    static_cast<void>(groups.Category(userText(std::to_string(item.group))));
    static_cast<void>(items.Category(userText(std::to_string(item.number))));
    const auto fill = [&](SystemText column, const BpString& text) {
        columnsOfPlan.Category(systemText(column)).Cell(text);
    };
    fill(messages::labelColumn, userText(item.label));
    fill(messages::selectedColumn, systemText(item.selected ? messages::yesWord : messages::noWord));
    fill(messages::changeColumn, userText(changesOf(item)));
    fill(messages::reasonColumn, userText(reasonsOf(item)));
}

}  // namespace

void showPlan(const Modification& modification, std::size_t group, const std::string& documentName) {
    const BpString number = userText(std::to_string(group));
    const BpString document = userText(documentName);
    const auto isOfGroup = [group](const PlannedItem& item) { return item.group == group; };
    if (std::none_of(modification.items.begin(), modification.items.end(), isOfGroup)) {
        say(noteLevel, messages::nothingSelected, {number, document});
        return;
    }
    BpComposite title(messages::planTitle, 1);
    title.Add(number).Add(document);
    title.Finish();
    BpPivotTable table = RunningHeading().PivotTable(title, userText({}), true);
    BpDimension groups = table.Dimension(systemText(messages::groupColumn), kind);
    groups.Position(rows, 1, 1, 1);
    BpDimension items = table.Dimension(systemText(messages::itemColumn), kind);
    items.Position(rows, 2, 1, 1);
    BpDimension columnsOfPlan = table.Dimension(systemText(messages::planColumns), kind);
    columnsOfPlan.Position(columns, 1, 1, 1);
    for (const PlannedItem& item : modification.items) {
        if (isOfGroup(item)) addRow(groups, items, columnsOfPlan, item);
    }
}

}  // namespace vexa::frontend
