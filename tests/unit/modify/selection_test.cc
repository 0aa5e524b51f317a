#include "frontend/modify/selection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/import/import_samples.h"
#include "tests/unit/modify/modify_samples.h"

namespace vexa::frontend {
namespace {

using testing::ElementsAre;

constexpr char kDocument[] = R"({"items": [
    {"type": "header", "command": "Means", "items": [
        {"type": "table", "label": "One", "subtype": "S"}, {"type": "table", "label": "Two", "visible": false}]},
    {"type": "model", "views": [{"type": "table", "label": "View"}]},
    {"type": "table", "label": "One", "subtype": "S"}, {"type": "table", "label": "Other", "subtype": "S"},
    {"type": "text", "text": "t"}]})";

/// "number reason" of what is missed.
std::vector<std::string> missedBy(const std::string& attributes, const std::string& criteria) {
    const ModifyRequest request = requestOf("<modifyEvent " + attributes + ">" + criteria + "</modifyEvent>");
    std::vector<MissedItem> missed;
    static_cast<void>(selectItems(resultsOf(kDocument), request.groups.at(0), &missed));
    std::vector<std::string> said;
    for (const MissedItem& each : missed)
        said.push_back(std::to_string(each.item.number) + ' ' + std::string(each.reason));
    return said;
}

TEST(ItemSelection, SaysWhyAnItemOfTheTypesIsMissed) {
    EXPECT_THAT(missedBy(R"(all="true")", ""), ElementsAre("5 It is a view of a model."));
    EXPECT_THAT(missedBy(R"(tables="true" visibleOnly="true")", ""), ElementsAre("3 It is hidden."));
    EXPECT_THAT(missedBy(R"(tables="true")", R"(<command commandName="Means" instance="1"/>)"),
                ElementsAre("5 It is of another command, or of another run.",
                            "6 It is of another command, or of another run.",
                            "7 It is of another command, or of another run."));
    EXPECT_THAT(
        missedBy(R"(tables="true")",
                 R"(<subtype subtype="s"/><label expression="One" exact="true"/><instance instance="2"/>)"),
        ElementsAre("3 It has another subtype.", "5 It has another subtype.", "7 It has another label.",
                    "2 It is another instance."));
}

TEST(ItemSelection, TakesTheItemsInTheirOrder) {
    const ModifyRequest request = requestOf(R"(<modifyEvent tables="true"></modifyEvent>)");
    std::vector<std::size_t> numbers;
    for (const SelectedItem& each : selectItems(resultsOf(kDocument), request.groups.at(0)))
        numbers.push_back(each.number);
    EXPECT_THAT(numbers, ElementsAre(2, 3, 5, 6, 7));
}

TEST(ItemSelection, ListsWhatIsMissedAmongWhatIsSelected) {
    const ModifyRequest request =
        requestOf(R"(<modifyEvent tables="true" visibleOnly="true"></modifyEvent>)");
    FewLooks looks;
    const Modification modification =
        PreparedRequest(request, looks).plan(resultsOf(kDocument), PlanDetail::allOfTheTypes);
    std::vector<std::size_t> numbers;
    for (const PlannedItem& each : modification.items) numbers.push_back(each.number);
    EXPECT_THAT(numbers, ElementsAre(2, 3, 5, 6, 7));
    EXPECT_FALSE(modification.items[1].selected);
    EXPECT_EQ(modification.selected, 4U);
}

}  // namespace
}  // namespace vexa::frontend
