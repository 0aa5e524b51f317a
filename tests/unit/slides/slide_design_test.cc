#include "frontend/export/slides/slide_design.h"

#include <gtest/gtest.h>

namespace vexa::frontend {
namespace {

void expectWithin(const SlideBox& box, const SlideDesign& design) {
    EXPECT_GE(box.left, 0);
    EXPECT_GE(box.top, 0);
    EXPECT_GT(box.width, 0);
    EXPECT_GT(box.height, 0);
    EXPECT_LE(box.left + box.width, design.slide.width + 0.01);
    EXPECT_LE(box.top + box.height, design.slide.height + 0.01);
}

TEST(SlideDesign, KeepsTheMargins) {
    ExportReport report;
    PptExport request;
    request.margins = {50, 40, 30, 20};
    const SlideDesign design = designSlides(request, report);
    EXPECT_EQ(30, design.content.left);
    EXPECT_EQ(50, design.title.top);
    EXPECT_GT(design.content.top, 50 + design.title.height);
    EXPECT_DOUBLE_EQ(request.slide.width - 50, design.content.width);
    EXPECT_DOUBLE_EQ(request.slide.height - 40, design.content.top + design.content.height);
    EXPECT_GE(design.footer.top, request.slide.height - 40);
    EXPECT_TRUE(report.logTexts().empty());
    request.slideTitles = false;
    EXPECT_EQ(50, designSlides(request, report).content.top);
}

TEST(SlideDesign, HasRoomWhateverIsAsked) {
    for (const double width : {1.0, 72.0, 300.0, 960.0, 1e6}) {
        for (const double margin : {0.01, 20.0, 70.0, 500.0, 1e6}) {
            ExportReport report;
            PptExport request;
            request.slide = {width, width / 2};
            request.margins = {margin, margin, margin, margin};
            const SlideDesign design = designSlides(request, report);
            expectWithin(design.title, design);
            expectWithin(design.content, design);
            expectWithin(design.section, design);
            expectWithin(design.footer, design);
            expectWithin(design.number, design);
        }
    }
}

TEST(SlideDesign, SaysWhatItChanges) {
    ExportReport report;
    PptExport request;
    request.slide = {10, 10};
    static_cast<void>(designSlides(request, report));
    EXPECT_EQ(2U, report.logTexts().size());
}

}  // namespace
}  // namespace vexa::frontend
