#include "frontend/modify/line_selection.h"

#include <gtest/gtest.h>

#include "tests/unit/processor_time.h"

namespace vexa::frontend {
namespace {

using Labels = std::unordered_set<std::string>;

TEST(CutLabels, TakesTheLongestPiecesThatAreLabels) {
    const Labels known{"a", "b", "a;b", "a;b;c;d"};
    EXPECT_EQ(cutLabels("a;b", known), Labels{"a;b"});
    EXPECT_EQ(cutLabels("b;a", known), (Labels{"a", "b"}));
    EXPECT_EQ(cutLabels("a;b;c", known), Labels{"a;b"});
    EXPECT_EQ(cutLabels("a;b;c;d;b", known), (Labels{"a;b;c;d", "b"}));
    EXPECT_EQ(cutLabels("x;a;b", known), Labels{"a;b"});
    EXPECT_EQ(cutLabels("x;y", known), Labels{});
}

TEST(CutLabels, ComparesThemAsSelectionsDo) {
    EXPECT_EQ(cutLabels(" Total ;N", {"total", "n"}), (Labels{"total", "n"}));
    EXPECT_EQ(cutLabels("A; B", {"a; b"}), Labels{"a; b"});
}

TEST(CutLabels, KnowsLabelsThatAreSeparators) {
    EXPECT_EQ(cutLabels(";", {";"}), Labels{";"});
    EXPECT_EQ(cutLabels("a;;b", {"a", ";b", "b"}), (Labels{"a", ";b"}));
    EXPECT_EQ(cutLabels("", {"a"}), Labels{});
}

TEST(CutLabels, TakesTimeInProportion) {
    std::string joined;
    for (int i = 0; i < 500'000; ++i) joined += "a;";
    constexpr double kFarTooLong = 10;  // seconds; a cost that grows with the square takes minutes
    EXPECT_LT(processorSeconds([&] {
                  EXPECT_EQ(cutLabels(joined, {"a", "b;c"}), Labels{"a"});
              }),
              kFarTooLong);
}

}  // namespace
}  // namespace vexa::frontend
