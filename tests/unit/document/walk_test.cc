#include "frontend/document/walk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vexa::frontend {
namespace {

using testing::ElementsAre;

Item header(const std::string& label, const std::string& command = "") {
    Item item;
    item.label = label;
    item.command = command;
    return item;
}

Item text(const std::string& label) {
    Item item;
    item.label = label;
    item.content = TextContent{};
    return item;
}

/// Writes what it meets: "label(depth number run#instance)".
class Notebook : public OutlineVisitor {
  public:
    bool enter(const WalkPlace& place) override {
        std::string line =
            place.item().label + '(' + std::to_string(place.depth) + ' ' + std::to_string(place.number) + ' ';
        if (place.run != nullptr) line += place.run->command + '#' + std::to_string(place.run->instance);
        lines.push_back(line + (place.hidden ? " hidden" : "") + (place.isOtherView() ? " other" : "") + ')');
        return place.item().label != passedOver;
    }
    void leave(const WalkPlace& place) override { lines.push_back('/' + place.item().label); }

    std::string passedOver;
    std::vector<std::string> lines;
};

TEST(Walk, EntersAndLeavesInOrder) {
    Outline outline;
    const ItemId run = outline.add(header("a", "Means"));
    outline.add(text("b"), run);
    outline.add(text("c"));
    Notebook notebook;
    walk(outline, notebook);
    EXPECT_THAT(notebook.lines, ElementsAre("a(0 1 Means#1)", "b(1 2 Means#1)", "/b", "/a", "c(0 3 )", "/c"));
    notebook.lines.clear();
    notebook.passedOver = "a";
    walk(outline, notebook);
    EXPECT_THAT(notebook.lines, ElementsAre("a(0 1 Means#1)", "/a", "c(0 3 )", "/c"));
}

TEST(Walk, WhatStandsUnderAHiddenHeaderIsHidden) {
    Outline outline;
    Item hidden = header("h");
    hidden.visible = false;
    outline.add(text("t"), outline.add(header("inner"), outline.add(hidden)));
    outline.add(text("after"));
    Notebook notebook;
    walk(outline, notebook);
    EXPECT_THAT(notebook.lines, ElementsAre("h(0 1  hidden)", "inner(1 2  hidden)", "t(2 3  hidden)", "/t",
                                            "/inner", "/h", "after(0 4 )", "/after"));
}

TEST(Walk, ViewsThatAreNotShownAreNotHidden) {
    Outline outline;
    Item model = text("m");
    model.content = ModelContent{1, {}};
    const ItemId id = outline.add(model);
    outline.add(text("in view"), outline.add(header("first"), id));
    outline.add(text("second"), id);
    Notebook notebook;
    walk(outline, notebook);
    EXPECT_THAT(notebook.lines, ElementsAre("m(0 1 )", "first(1 2  other)", "in view(2 3  other)", "/in view",
                                            "/first", "second(1 4 )", "/second", "/m"));
}

TEST(Runs, AreCountedByCommandWithoutRegardToCase) {
    Outline outline;
    const ItemId first = outline.add(header("one", "Means"));
    outline.add(header("nested", "Report"), first);
    outline.add(header("section"));
    outline.add(header("two", " MEANS "));
    Item notARun = text("x");
    notARun.command = "Means";
    outline.add(notARun);
    std::vector<std::string> shown;
    for (const auto& run : runsOf(outline)) shown.push_back(run.title + ' ' + std::to_string(run.instance));
    EXPECT_THAT(shown, ElementsAre("one 1", "nested 1", "two 2"));
}

TEST(Runs, AnItemBelongsToTheInnermostOneAndItsOwnCommandCounts) {
    Outline outline;
    const ItemId outer = outline.add(header("outer", "Outer"));
    const ItemId inner = outline.add(header("inner", "Inner"), outer);
    outline.add(text("deep"), inner);
    Item own = text("own");
    own.command = "Own";
    outline.add(own, inner);
    outline.add(text("shallow"), outer);

    struct Commands : OutlineVisitor {
        bool enter(const WalkPlace& place) override {
            found.push_back(place.command());
            return true;
        }
        std::vector<std::string> found;
    } commands;
    walk(outline, commands);
    EXPECT_THAT(commands.found, ElementsAre("Outer", "Inner", "Inner", "Own", "Outer"));
}

}  // namespace
}  // namespace vexa::frontend
