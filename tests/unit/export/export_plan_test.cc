#include "frontend/export/export_plan.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace vexa::frontend {
namespace {

Item itemOf(ItemContent content, std::string label, bool visible = true) {
    Item item;
    item.label = std::move(label);
    item.visible = visible;
    item.content = std::move(content);
    return item;
}

Item textOf(std::string label, bool visible = true) {
    return itemOf(TextContent{}, std::move(label), visible);
}

Item chartOf(std::string label) {
    ChartContent chart;
    chart.picture = std::make_shared<const Picture>();
    return itemOf(std::move(chart), std::move(label));
}

/// A table with one layer dimension of three categories.
Item tableOf(std::string label, std::optional<tables::LayerPrinting> printing) {
    tables::TableDimension layer;
    layer.categories.resize(3);
    tables::TableDataBuilder builder({layer});
    for (tables::Place place = 0; place < 3; ++place) builder.setNumber(place, 1);
    tables::TableView view;
    view.layers = {0};
    view.dimensions.resize(1);
    view.dimensions[0].shown = 1;
    view.layerPrinting = printing;
    return itemOf(TableContent{tables::makeTable(builder.finish(), std::move(view))}, std::move(label));
}

/// "1 header/0 2 text/1": number, label and depth of each item.
std::string pictureOf(const ExportPlan& plan) {
    std::string picture;
    for (const ExportedItem& each : plan.items) {
        picture += (picture.empty() ? "" : " ") + std::to_string(each.number) + each.label + "/" +
                   std::to_string(each.depth);
    }
    return picture;
}

TEST(ExportPlan, HasItemsInTheOrderOfTheOutline) {
    Outline outline;
    const ItemId header = outline.add(itemOf(HeaderContent{}, "h"));
    outline.add(textOf("t"), header);
    outline.add(chartOf("c"));
    const ExportPlan plan = planExport(outline, {});
    EXPECT_EQ(pictureOf(plan), "1h/0 2t/1 3c/0");
    EXPECT_EQ(plan.pictures, 1U);
}

TEST(ExportPlan, LeavesOutWhatIsHiddenAndHeadersWithNothingLeft) {
    Outline outline;
    const ItemId hidden = outline.add(itemOf(HeaderContent{}, "h", false));
    outline.add(textOf("a"), hidden);
    const ItemId emptied = outline.add(itemOf(HeaderContent{}, "e"));
    outline.add(textOf("b", false), emptied);
    outline.add(textOf("c"));
    EXPECT_EQ(pictureOf(planExport(outline, {})), "5c/0");
    ExportSelection all;
    all.hiddenItems = true;
    EXPECT_EQ(pictureOf(planExport(outline, all)), "1h/0 2a/1 3e/0 4b/1 5c/0");
}

TEST(ExportPlan, KeepsAnUnknownItemThatHoldsNothing) {
    Outline outline;
    UnknownContent unknown;
    unknown.raw = std::make_shared<const std::string>();
    outline.add(itemOf(std::move(unknown), "u"));
    EXPECT_EQ(pictureOf(planExport(outline, {})), "1u/0");
}

TEST(ExportPlan, NamesLongLabelsByTheirBeginning) {
    ExportedItem item;
    item.label = "Income";
    EXPECT_EQ("Income", item.shortLabel());
    for (int i = 0; i < 200; ++i) item.label += "ä";
    EXPECT_EQ(std::string("Income").size() + 2 * 194, item.shortLabel().find("…"));
    EXPECT_TRUE(item.shortLabel().ends_with("ä…"));
}

TEST(ExportPlan, TellsAnEmptyDocumentFromAHiddenOne) {
    EXPECT_TRUE(planExport({}, {}).documentIsEmpty);
    EXPECT_FALSE(planExport({}, {}).everythingIsHidden());
    Outline outline;
    outline.add(textOf("a", false));
    EXPECT_FALSE(planExport(outline, {}).documentIsEmpty);
    EXPECT_TRUE(planExport(outline, {}).everythingIsHidden());
}

TEST(ExportPlan, TakesHeadersAndModelsAloneForNothing) {
    Outline outline;
    outline.add(itemOf(HeaderContent{}, "h"));
    outline.add(itemOf(ModelContent{}, "m"));
    EXPECT_TRUE(planExport(outline, {}).documentIsEmpty);
    EXPECT_FALSE(planExport(outline, {}).everythingIsHidden());
    outline.add(textOf("a"), outline.add(itemOf(HeaderContent{}, "h", false)));
    EXPECT_FALSE(planExport(outline, {}).documentIsEmpty);
    EXPECT_TRUE(planExport(outline, {}).everythingIsHidden());
}

TEST(ExportPlan, KeepsAHeaderThatNeverHeldAnything) {
    Outline outline;
    const ItemId section = outline.add(itemOf(HeaderContent{}, "s"));
    outline.add(itemOf(HeaderContent{}, "i"), section);
    outline.add(itemOf(HeaderContent{}, "hidden", false));
    outline.add(textOf("t"));
    EXPECT_EQ(pictureOf(planExport(outline, {})), "1s/0 2i/1 4t/0");
}

TEST(ExportPlan, LeavesOutExcludedTypes) {
    Outline outline;
    outline.add(textOf("a"));
    outline.add(chartOf("c"));
    ExportSelection selection;
    selection.excluded = {ItemType::text};
    EXPECT_EQ(pictureOf(planExport(outline, selection)), "2c/0");
}

TEST(ExportPlan, TakesLayersByPrintSettingUnlessAskedOtherwise) {
    Outline outline;
    outline.add(tableOf("none", std::nullopt));
    outline.add(tableOf("visible", tables::LayerPrinting::visible));
    outline.add(tableOf("all", tables::LayerPrinting::all));
    const auto layersOfAll = [&](ExportedParts parts) {
        ExportSelection selection;
        selection.layers = parts;
        std::vector<std::vector<tables::Place>> layers;
        for (const ExportedItem& each : planExport(outline, selection).items) layers.push_back(each.layers);
        return layers;
    };
    const std::vector<tables::Place> shown{1};
    const std::vector<tables::Place> every{0, 1, 2};
    using All = std::vector<std::vector<tables::Place>>;
    EXPECT_EQ(layersOfAll(ExportedParts::printSetting), (All{shown, shown, every}));
    EXPECT_EQ(layersOfAll(ExportedParts::visible), (All{shown, shown, shown}));
    EXPECT_EQ(layersOfAll(ExportedParts::all), (All{every, every, every}));
}

TEST(ExportPlan, TakesViewsByPrintSettingUnlessAskedOtherwise) {
    Outline outline;
    ModelContent model;
    model.shown = 1;
    const ItemId first = outline.add(itemOf(model, "m"));
    outline.add(textOf("a"), first);
    outline.add(textOf("b"), first);
    model.viewPrinting = tables::LayerPrinting::all;
    const ItemId second = outline.add(itemOf(model, "n"));
    outline.add(textOf("c"), second);
    outline.add(textOf("d"), second);
    ExportSelection selection;
    EXPECT_EQ(pictureOf(planExport(outline, selection)), "1m/0 3b/1 4n/0 5c/1 6d/1");
    selection.views = ExportedParts::visible;
    EXPECT_EQ(pictureOf(planExport(outline, selection)), "1m/0 3b/1 4n/0 6d/1");
    selection.views = ExportedParts::all;
    EXPECT_EQ(pictureOf(planExport(outline, selection)), "1m/0 2a/1 3b/1 4n/0 5c/1 6d/1");
}

}  // namespace
}  // namespace vexa::frontend
