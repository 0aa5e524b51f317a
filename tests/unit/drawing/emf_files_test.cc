#include <gtest/gtest.h>

#include <fstream>

#include "frontend/drawing/dashed_path.h"
#include "tests/unit/drawing/sample_pictures.h"

using namespace vexa::frontend;
using namespace vexa::frontend::test;

namespace {

/// What is said of the file, and how far the picture that it shows is from the PNG.
std::string judgedEmf(const Picture& picture) {
    static_cast<void>(isInstalled("inkscape"));  // without it every difference is 0
    const DrawnPicture file = drawn(picture, orderOf(DrawnForm::emf));
    EXPECT_EQ("", file.reason);
    const std::string png = temporaryFile(".png");
    std::ofstream(png, std::ios::binary) << drawn(picture, orderOf(DrawnForm::png)).bytes;
    std::string found = judged(file.bytes, ".emf", png);
    std::remove(png.c_str());
    return found;
}

TEST(EmfFiles, HavePathsAsPaths) {
    EXPECT_EQ("EMF 80x40 sound texts= paths=2 bitmaps=0 saved=even difference=0", judgedEmf(twoBars()));
    EXPECT_EQ(
        "EMF 80x40 sound texts= paths=2 bitmaps=0 saved=even difference=0",
        judgedEmf(svgOf("<clipPath id='c'><rect width='40' height='40'/></clipPath><g clip-path='url(#c)'>"
                        "<path fill-rule='evenodd' d='M0 0h60v40h-60zM10 10h20v20h-20z' fill='#aa0000'/></g>"
                        "<path d='M50 20h20' stroke='black' stroke-width='4'/>")));
}

TEST(EmfFiles, HaveTextsAsTexts) {
    const std::string found = judgedEmf(someText());
    EXPECT_TRUE(found.starts_with("EMF 80x40 sound texts=Income paths=0 bitmaps=0 saved=even difference="))
        << found;
    EXPECT_LT(std::stoi(found.substr(found.find("difference=") + 11)), 12) << found;
}

TEST(EmfFiles, HaveTextsOnOneLineThatStandApartAsTextsOfTheirOwn) {
    const std::string found = judgedEmf(svgOf(
        "<g font-family='DejaVu Sans' font-size='9'><text x='2' y='14'>No</text><text x='32' y='14'>So</text>"
        "<text x='60' y='14' letter-spacing='1'>We</text></g>"));
    EXPECT_TRUE(found.starts_with("EMF 80x40 sound texts=No|So|We paths=0")) << found;
    EXPECT_LT(std::stoi(found.substr(found.find("difference=") + 11)), 12) << found;
}

TEST(EmfFiles, HaveTextsInTheOrderInWhichTheyAreRead) {
    const std::string found = judgedEmf(svgOf(
        "<text x='2' y='14' font-family='DejaVu Sans' font-size='9'>\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D</text>"
        "<text x='2' y='34' font-family='DejaVu Sans' font-size='9' fill-opacity='0.5'>\xF0\x9F\x98\x80 "
        "\xC3\xA4</text>"));
    EXPECT_NE(std::string::npos, found.find("texts=\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D|")) << found;
    EXPECT_NE(std::string::npos, found.find("\xF0\x9F\x98\x80")) << found;
    EXPECT_NE(std::string::npos, found.find("\xC3\xA4")) << found;
}

TEST(EmfFiles, HaveTheRestAsBitmaps) {
    EXPECT_EQ("EMF 80x40 sound texts= paths=1 bitmaps=1 saved=even difference=0",
              judgedEmf(svgOf("<defs><linearGradient id='g'><stop stop-color='red'/><stop offset='1' "
                              "stop-color='blue'/></linearGradient></defs><rect width='40' height='40' "
                              "fill='url(#g)'/><rect x='50' width='20' height='20'/>")));
    EXPECT_EQ(
        "EMF 80x40 sound texts= paths=1 bitmaps=1 saved=even difference=0",
        judgedEmf(svgOf("<rect width='80' height='40' fill='#00aa00'/><g opacity='0.5'><rect x='10' y='10' "
                        "width='20' height='20' fill='white'/></g>")));
}

TEST(EmfFiles, OfPngAreOneBitmap) {
    const Picture png{PictureForm::png, drawn(twoBars(), orderOf(DrawnForm::png)).bytes, 60, 30};
    EXPECT_EQ("EMF 80x40 sound texts= paths=0 bitmaps=1 saved=even difference=0", judgedEmf(png));
}

TEST(EmfFiles, OfWhatCannotBeDrawnAreAFrameWithItsText) {
    const DrawnPicture file = drawn({PictureForm::svg, "<svg", 60, 30}, orderOf(DrawnForm::emf));
    EXPECT_NE("", file.reason);
    const std::string found = judged(file.bytes, ".emf");
    EXPECT_TRUE(found.starts_with("EMF 80x40 sound texts=Two bars ")) << found;
}

double lengthOf(const VectorPath& path) {
    double length = 0;
    for (std::size_t i = 1; i < path.parts.size(); ++i) {
        if (path.parts[i].step == PathStep::line) {
            length += path.parts[i].points[0].x - path.parts[i - 1].points[0].x;
        }
    }
    return length;
}

TEST(DashedPaths, AreTheDashesOfALine) {
    const VectorPath path{{{PathStep::move, {{{0, 0}}}}, {PathStep::line, {{{10, 0}}}}}};
    VectorLine line;
    EXPECT_EQ(2U, dashedPath(path, line).parts.size());
    line.dashes = {2, 1};
    EXPECT_DOUBLE_EQ(7, lengthOf(dashedPath(path, line)));
    line.dashes = {3};
    EXPECT_DOUBLE_EQ(6, lengthOf(dashedPath(path, line)));
    line.dashBegin = 3;
    EXPECT_DOUBLE_EQ(4, lengthOf(dashedPath(path, line)));
    line.dashes = {0, 0};
    EXPECT_EQ(2U, dashedPath(path, line).parts.size());
    line.dashes = {1e-9, 1e-9};
    EXPECT_EQ(2U, dashedPath(path, line).parts.size());
}

}  // namespace
