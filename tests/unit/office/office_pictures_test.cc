#include "frontend/export/office/office_pictures.h"

#include <gtest/gtest.h>

#include "frontend/drawing/picture_drawing.h"
#include "tests/unit/export/export_samples.h"

namespace vexa::frontend {
namespace {

constexpr std::string_view pngSignature = "\x89PNG\r\n\x1A\n";

/// Width and height of a PNG, in pixels.
std::pair<int, int> pixelsOf(const std::string& png) {
    const auto number = [&](std::size_t at) {
        return static_cast<unsigned char>(png[at + 2]) * 256 + static_cast<unsigned char>(png[at + 3]);
    };
    return {number(16), number(20)};
}

struct Made {
    ExportReport report;
    OfficePicture picture;
};

void make(Made& made, const std::string& items, double scale = 1) {
    ViewerDocument document;
    fill(document, items);
    const ExportPlan plan = planExport(document.outline(), {});
    OfficePictures pictures(plan, {}, made.report, [scale](const ExportedItem&) { return scale; });
    made.picture = pictures.make(plan.items.front());
}

TEST(OfficePictures, AreABitmapAndTheSvgWithItsRules) {
    Made made;
    make(made,
         R"({"type":"chart","label":"Bars","alternativeText":"Two bars","width":60,"height":30,
             "templates":["<template><style>rect{fill:red}</style></template>"],
             "svg":"<svg xmlns='http://www.w3.org/2000/svg' width='80' height='40'><rect width='8' height='8'/></svg>"})");
    EXPECT_TRUE(made.picture.png.starts_with(pngSignature));
    EXPECT_NE(std::string::npos, made.picture.svg.find("fill:red")) << made.picture.svg;
    EXPECT_EQ(60, made.picture.size.width);
    EXPECT_EQ(30, made.picture.size.height);
    EXPECT_EQ("Two bars", made.picture.alternative);
    EXPECT_EQ(1U, made.report.pictures());
    EXPECT_EQ(canDraw() ? 0U : 1U, made.report.logTexts().size());
    if (canDraw()) {
        EXPECT_EQ(std::make_pair(160, 80), pixelsOf(made.picture.png));
    }
}

TEST(OfficePictures, AreDrawnForTheSizeThatTheyAreShownIn) {
    if (!canDraw()) GTEST_SKIP() << "this build cannot draw";
    Made made;
    make(made, R"({"type":"chart","svg":"<svg xmlns='http://www.w3.org/2000/svg' width='80' height='40'/>"})",
         3);
    EXPECT_EQ(std::make_pair(480, 240), pixelsOf(made.picture.png));
}

TEST(OfficePictures, OfPngAreThePngItself) {
    Made made;
    make(
        made,
        R"({"type":"chart","label":"Dot","png":"iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAAAAAA6fptVAAAACklEQVR4nGNgAAAAAgABSK+kcQAAAABJRU5ErkJggg=="})");
    EXPECT_EQ(std::make_pair(1, 1), pixelsOf(made.picture.png));
    EXPECT_EQ("", made.picture.svg);
    EXPECT_EQ("Dot", made.picture.alternative);
    EXPECT_TRUE(made.report.logTexts().empty());
}

TEST(OfficePictures, ThatCannotBeDrawnHaveAFrame) {
    if (!canDraw()) GTEST_SKIP() << "this build cannot draw";
    Made made;
    // It can be parsed, which is what an import asks for, but not be drawn.
    make(
        made,
        R"({"type":"chart","label":"Broken","svg":"<svg xmlns='http://www.w3.org/2000/svg' width='80' height='40'>&none;</svg>"})");
    EXPECT_TRUE(made.picture.png.starts_with(pngSignature));
    EXPECT_EQ("", made.picture.svg);
}

}  // namespace
}  // namespace vexa::frontend
