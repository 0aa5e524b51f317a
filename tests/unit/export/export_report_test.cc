#include "frontend/export/export_report.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace vexa::frontend {
namespace {

ExportedItem itemOf(std::size_t number, std::string label) {
    ExportedItem item;
    item.number = number;
    item.label = std::move(label);
    return item;
}

TEST(ExportReport, WarnsOnceForEachItemAndCode) {
    ExportReport report;
    const ExportedItem first = itemOf(1, "a");
    report.warn(ExportWarning::columnsCut, first);
    report.warn(ExportWarning::columnsCut, first);
    report.warn(ExportWarning::textsCut, first);
    report.warn(ExportWarning::columnsCut, itemOf(2, "b"));
    EXPECT_EQ(report.warnings(), (std::vector<CodedWarning>{{ExportWarning::columnsCut, 1, "a"},
                                                            {ExportWarning::textsCut, 1, "a"},
                                                            {ExportWarning::columnsCut, 2, "b"}}));
}

TEST(ExportReport, NamesAllThatAnItemLosesInOneText) {
    ExportReport report;
    report.lose(Feature::footnotes, itemOf(2, "b"));
    report.lose(Feature::fonts, itemOf(1, "a"));
    report.lose(Feature::backgrounds, itemOf(1, "a"));
    report.lose(Feature::fonts, itemOf(1, "a"));
    report.note("A note.");
    report.note("A note.");
    EXPECT_EQ(
        report.logTexts(),
        (std::vector<std::string>{
            "A note.", "Item 1 (a): this format cannot show everything of it. Lost: fonts, backgrounds.",
            "Item 2 (b): this format cannot show everything of it. Lost: footnotes."}));
}

TEST(ExportReport, TheFirstFailureCounts) {
    ExportReport report;
    EXPECT_FALSE(report.failed());
    report.fail(ExportError::cannotWrite, "full");
    report.fail(ExportError::other, "later");
    EXPECT_TRUE(report.failed());
    EXPECT_EQ(report.error(), ExportError::cannotWrite);
    EXPECT_EQ(report.reason(), "full");
}

TEST(ExportReport, EveryFeatureHasATextOfItsOwn) {
    std::set<std::string_view> texts;
    for (std::size_t i = 0; i < featureCount; ++i) texts.insert(featureText(static_cast<Feature>(i)).key());
    EXPECT_EQ(texts.size(), featureCount);
}

}  // namespace
}  // namespace vexa::frontend
