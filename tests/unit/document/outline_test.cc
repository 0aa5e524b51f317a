#include "frontend/document/outline.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "frontend/document/compared_text.h"

namespace vexa::frontend {
namespace {

using testing::ElementsAre;

Item textItem(const std::string& label, const std::string& text = "") {
    Item item;
    item.label = label;
    item.content = TextContent{{text, {}}};
    return item;
}

Item headerItem(const std::string& label) {
    Item item;
    item.label = label;
    return item;
}

TEST(Outline, FindsWhatWasAdded) {
    Outline outline;
    EXPECT_TRUE(outline.isEmpty());
    const ItemId header = outline.add(headerItem("h"));
    const ItemId text = outline.add(textItem("t"), header);
    ASSERT_NE(outline.find(text), nullptr);
    EXPECT_EQ(outline.find(text)->item.label, "t");
    EXPECT_EQ(outline.find(text)->parent, header);
    EXPECT_THAT(outline.find(header)->children, ElementsAre(text));
    EXPECT_THAT(outline.roots(), ElementsAre(header));
    EXPECT_EQ(outline.size(), 2U);
    EXPECT_EQ(outline.find(0), nullptr);
    EXPECT_EQ(outline.find(text + 1), nullptr);
}

TEST(Outline, RemovingAnItemTakesWhatStandsUnderIt) {
    Outline outline;
    const ItemId header = outline.add(headerItem("h"));
    const ItemId inner = outline.add(headerItem("inner"), header);
    const ItemId deep = outline.add(textItem("deep"), inner);
    const ItemId after = outline.add(textItem("after"), header);
    outline.remove(inner);
    EXPECT_EQ(outline.find(inner), nullptr);
    EXPECT_EQ(outline.find(deep), nullptr);
    EXPECT_THAT(outline.find(header)->children, ElementsAre(after));
    EXPECT_EQ(outline.size(), 2U);
    outline.remove(header);
    EXPECT_TRUE(outline.isEmpty());
    EXPECT_TRUE(outline.roots().empty());
    EXPECT_NE(outline.add(textItem("new")), header) << "an id is given once";
}

TEST(Outline, ACopyIsChangedAlone) {
    Outline outline;
    const ItemId header = outline.add(headerItem("h"));
    const ItemId kept = outline.add(textItem("kept"), header);
    const ItemId changed = outline.add(textItem("changed"), header);
    Outline copy = outline;
    EXPECT_TRUE(copy == outline);
    copy.change(changed).label = "new";
    copy.add(textItem("more"), header);
    copy.remove(kept);
    EXPECT_EQ(outline.find(changed)->item.label, "changed");
    EXPECT_THAT(outline.find(header)->children, ElementsAre(kept, changed));
    EXPECT_EQ(outline.size(), 3U);
    EXPECT_EQ(copy.size(), 3U);
    EXPECT_FALSE(copy == outline);
}

TEST(Outline, IsEqualWhateverItsIds) {
    Outline one;
    one.remove(one.add(textItem("gone")));
    one.add(textItem("t"), one.add(headerItem("h")));
    Outline two;
    two.add(textItem("t"), two.add(headerItem("h")));
    EXPECT_TRUE(one == two);
    two.add(headerItem("h"));
    EXPECT_FALSE(one == two);
    Outline flat;
    flat.add(headerItem("h"));
    flat.add(textItem("t"));
    EXPECT_FALSE(one == flat) << "the same items, nested otherwise";
}

TEST(Item, IsLabelledByWhatThereIs) {
    Item item = textItem("");
    EXPECT_EQ(shownLabel(item), "text");
    item.command = "MEANS";
    EXPECT_EQ(shownLabel(item), "MEANS");
    auto grid = std::make_shared<tables::FlatTable>();
    grid->title = "Title";
    item.content = GridContent{grid};
    EXPECT_EQ(shownLabel(item), "Title");
    item.label = "Label";
    EXPECT_EQ(shownLabel(item), "Label");
    item = Item();
    item.content = UnknownContent{"hologram", std::make_shared<const std::string>()};
    EXPECT_EQ(shownLabel(item), "hologram");
}

TEST(Item, KeepsTheProportionOfItsPicture) {
    Item item;
    EXPECT_FALSE(shownSize(item));
    ChartContent chart;
    chart.picture = std::make_shared<const Picture>(Picture{PictureForm::svg, "<svg/>", 200, 100});
    item.content = chart;
    EXPECT_EQ(shownSize(item)->width, 200);
    item.width = 50;
    EXPECT_EQ(shownSize(item)->height, 25);
    item.height = 7;
    EXPECT_EQ(shownSize(item)->height, 7);
    item.width.reset();
    EXPECT_EQ(shownSize(item)->width, 14);
}

TEST(ItemType, HasOneWord) {
    for (std::size_t i = 0; i < itemTypeCount; ++i) {
        EXPECT_EQ(itemTypeOf(itemTypeWords[i]), static_cast<ItemType>(i));
    }
    EXPECT_EQ(itemTypeOf("hologram"), ItemType::unknown);
    EXPECT_EQ(itemTypeOf("Table"), ItemType::unknown);
}

TEST(ComparedText, IgnoresCaseAndBlanksAround) {
    EXPECT_EQ(comparedText("  \xc3\x84 b  "), comparedText("\xc3\xa4 B"));
    EXPECT_NE(comparedText("a b"), comparedText("ab"));
    EXPECT_EQ(comparedText("\xff"), "\xff");
    EXPECT_EQ(comparedText("   "), "");
}

}  // namespace
}  // namespace vexa::frontend
