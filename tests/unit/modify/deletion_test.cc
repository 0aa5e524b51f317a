#include "frontend/modify/deletion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/import/import_samples.h"

namespace vexa::frontend {
namespace {

/// An outline with one model of `views` views of which one is shown.
struct ModelSample {
    ModelSample(std::size_t views, std::size_t shown) {
        Item model;
        model.content = ModelContent{shown, std::nullopt};
        id = outline.add(model);
        for (std::size_t i = 0; i < views; ++i) {
            Item view;
            view.label = std::to_string(i);
            view.content = TextContent{};
            ids.push_back(outline.add(view, id));
        }
    }

    void remove(const std::vector<std::size_t>& indexes) {
        std::vector<SelectedItem> items;
        for (const std::size_t each : indexes) items.push_back({ids[each], 0});
        removeItems(outline, items);
    }

    [[nodiscard]] std::string shown() const {
        const OutlineNode* const model = outline.find(id);
        if (model == nullptr) return "gone";
        return outline.find(model->children.at(std::get<ModelContent>(model->item.content).shown))
            ->item.label;
    }

    Outline outline;
    ItemId id = 0;
    std::vector<ItemId> ids;
};

std::string shownAfter(std::size_t views, std::size_t shown, const std::vector<std::size_t>& removed) {
    ModelSample sample(views, shown);
    sample.remove(removed);
    return sample.shown();
}

TEST(Deletion, AModelGoesOnShowingItsView) {
    EXPECT_EQ(shownAfter(4, 2, {0, 1}), "2");
    EXPECT_EQ(shownAfter(4, 2, {3}), "2");
    EXPECT_EQ(shownAfter(4, 2, {0, 3}), "2");
}

TEST(Deletion, ElseTheOneBehindElseTheOneBefore) {
    EXPECT_EQ(shownAfter(4, 1, {1}), "2");
    EXPECT_EQ(shownAfter(4, 1, {1, 2}), "3");
    EXPECT_EQ(shownAfter(4, 1, {0, 1, 2}), "3");
    EXPECT_EQ(shownAfter(4, 3, {3}), "2");
    EXPECT_EQ(shownAfter(4, 2, {2, 3}), "1");
    EXPECT_EQ(shownAfter(4, 2, {1, 2, 3}), "0");
}

TEST(Deletion, AModelWithoutViewsGoesAndSoDoModelsAroundIt) {
    EXPECT_EQ(shownAfter(2, 0, {0, 1}), "gone");
    Outline outline;
    Item model;
    model.content = ModelContent{};
    const ItemId outer = outline.add(model);
    const ItemId inner = outline.add(model, outer);
    Item text;
    text.content = TextContent{};
    const ItemId view = outline.add(text, inner);
    removeItems(outline, {{view, 3}});
    EXPECT_TRUE(outline.isEmpty());
}

TEST(Deletion, AnItemThatWentWithAnotherIsNoProblem) {
    Outline outline;
    Item header;
    const ItemId first = outline.add(header);
    const ItemId second = outline.add(header, first);
    removeItems(outline, {{first, 1}, {second, 2}});
    EXPECT_TRUE(outline.isEmpty());
}

}  // namespace
}  // namespace vexa::frontend
