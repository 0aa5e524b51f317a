#include <gtest/gtest.h>

#include "frontend/drawing/bitmap.h"
#include "tests/unit/drawing/sample_pictures.h"

using namespace vexa::frontend;
using namespace vexa::frontend::test;

namespace {

std::string judgedPng(const Picture& picture, DrawnDepth depth, const std::string& places = {}) {
    const DrawnPicture file = drawn(picture, orderOf(DrawnForm::png, depth));
    EXPECT_EQ("", file.reason);
    return judged(file.bytes, ".png", places);
}

TEST(PictureFiles, PngHasTheDepthsThatCommandsName) {
    EXPECT_EQ("PNG 1 80x40 dots=96 bits=1 colors=2 255,255,255,255",
              judgedPng(twoBars(), DrawnDepth::blackWhite, "40,20"));
    EXPECT_EQ("PNG L 80x40 dots=96 bits=8 colors=3 76,76,76,255 255,255,255,255 29,29,29,255",
              judgedPng(twoBars(), DrawnDepth::grays256, "5,5 40,20 75,35"));
    EXPECT_EQ("PNG P 80x40 dots=96 bits=4 colors=3 255,0,0,255 255,255,255,255 0,0,255,255",
              judgedPng(twoBars(), DrawnDepth::colors16, "5,5 40,20 75,35"));
    EXPECT_EQ("PNG P 80x40 dots=96 bits=8 colors=3 255,0,0,255 255,255,255,255 0,0,255,255",
              judgedPng(twoBars(), DrawnDepth::colors256, "5,5 40,20 75,35"));
    EXPECT_EQ("PNG RGB 80x40 dots=96 bits=8 colors=3 255,0,0,255 255,255,255,255 0,0,255,255",
              judgedPng(twoBars(), DrawnDepth::true24Bit, "5,5 40,20 75,35"));
    EXPECT_EQ("PNG RGBA 80x40 dots=96 bits=8 colors=3 255,0,0,255 0,0,0,0 0,0,255,255",
              judgedPng(twoBars(), DrawnDepth::true32Bit, "5,5 40,20 75,35"));
}

TEST(PictureFiles, ManyColorsBecomeAPaletteOfTheAskedSize) {
    EXPECT_TRUE(
        judgedPng(manyColors(), DrawnDepth::colors16).starts_with("PNG P 80x40 dots=96 bits=4 colors=1"))
        << judgedPng(manyColors(), DrawnDepth::colors16);
    EXPECT_TRUE(
        judgedPng(manyColors(), DrawnDepth::colors256).starts_with("PNG P 80x40 dots=96 bits=8 colors="))
        << judgedPng(manyColors(), DrawnDepth::colors256);
    EXPECT_EQ("PNG RGB 80x40 dots=96 bits=8 colors=400", judgedPng(manyColors(), DrawnDepth::true24Bit));
}

TEST(PictureFiles, EvenAreasKeepTheirColorInAPalette) {
    // The slope has more than 16 colours at its edge.
    const Picture slope = svgOf(
        "<path d='M0 0L30 0L11 40L0 40z' fill='#4477aa'/><path d='M50 0L80 0L80 40L37 40z' "
        "fill='#cc3311'/>");
    const std::string found = judgedPng(slope, DrawnDepth::colors16, "2,2 32,38 78,38");
    EXPECT_TRUE(found.ends_with(" 68,119,170,255 255,255,255,255 204,51,17,255")) << found;
}

TEST(PictureFiles, SlopesOfColorsStaySlopesInAPalette) {
    const Picture slope = svgOf(
        "<defs><linearGradient id='g'><stop stop-color='red'/><stop offset='1' "
        "stop-color='blue'/></linearGradient></defs><rect y='10' width='80' height='30' fill='url(#g)'/>");
    // 80 columns have 80 colours; with the white ground that is less than 256.
    EXPECT_EQ("PNG P 80x40 dots=96 bits=8 colors=81 255,255,255,255",
              judgedPng(slope, DrawnDepth::colors256, "40,2"));
    EXPECT_EQ("PNG P 80x40 dots=96 bits=4 colors=16 255,255,255,255",
              judgedPng(slope, DrawnDepth::colors16, "40,2"));
    EXPECT_TRUE(
        judgedPng(manyColors(), DrawnDepth::colors256).starts_with("PNG P 80x40 dots=96 bits=8 colors=2"))
        << judgedPng(manyColors(), DrawnDepth::colors256);
}

TEST(PictureFiles, JpgIsInColorsOrGray) {
    DrawingOrder order = orderOf(DrawnForm::jpg);
    EXPECT_TRUE(judged(drawn(twoBars(), order).bytes, ".jpg").starts_with("JPEG RGB 80x40 dots=96 "));
    order.grayscale = true;
    EXPECT_TRUE(judged(drawn(twoBars(), order).bytes, ".jpg").starts_with("JPEG L 80x40 dots=96 "));
}

TEST(PictureFiles, TifIsCompressed) {
    EXPECT_EQ("TIFF RGB 80x40 dots=96 bits=0 colors=3 compression=tiff_lzw 255,0,0,255",
              judged(drawn(twoBars(), orderOf(DrawnForm::tif)).bytes, ".tif", "5,5"));
}

TEST(PictureFiles, TifIsSoundForItsOwnTools) {
    if (!isInstalled("tiffinfo")) GTEST_SKIP();
    EXPECT_EQ("LZW sound", judged(drawn(manyColors(), orderOf(DrawnForm::tif)).bytes, ".tif", "tools"));
}

TEST(PictureFiles, BmpIsByRunsWhereItsColorsAllowIt) {
    DrawingOrder order = orderOf(DrawnForm::bmp);
    const std::string plain = drawn(twoBars(), order).bytes;
    EXPECT_EQ("BMP RGB 80x40 dots=96 bits=24 colors=3 compression=0 255,0,0,255 255,255,255,255 0,0,255,255",
              judged(plain, ".bmp", "5,5 40,20 75,35"));
    order.compress = true;
    const std::string byRuns = drawn(twoBars(), order).bytes;
    EXPECT_LT(byRuns.size(), plain.size() / 10);
    EXPECT_EQ("BMP P 80x40 dots=96 bits=8 colors=3 compression=1 255,0,0,255 255,255,255,255 0,0,255,255",
              judged(byRuns, ".bmp", "5,5 40,20 75,35"));
    EXPECT_EQ("BMP RGB 80x40 dots=96 bits=24 colors=400 compression=0",
              judged(drawn(manyColors(), order).bytes, ".bmp"));
}

TEST(PictureFiles, RunsOfABmpAreCutAt255Pixels) {
    Bitmap bitmap{600, 2, std::vector<std::uint32_t>(1200, 0xFF0000FFU)};
    EXPECT_EQ("BMP P 600x2 dots=96 bits=8 colors=1 compression=1 255,0,0,255 255,0,0,255",
              judged(bmpFile(bitmap, true), ".bmp", "0,0 599,1"));
    bitmap = {3, 2, std::vector<std::uint32_t>(6, 0x0000FFFFU)};
    EXPECT_EQ("BMP RGB 3x2 dots=96 bits=24 colors=1 compression=0 0,0,255,255 0,0,255,255",
              judged(bmpFile(bitmap, false), ".bmp", "0,0 2,1"));
}

TEST(PictureFiles, SizesAreThoseAskedFor) {
    DrawingOrder order = orderOf(DrawnForm::png);
    order.width = 120;
    order.height = 60;
    EXPECT_EQ("PNG RGB 160x80 dots=96 bits=8 colors=3 255,0,0,255 0,0,255,255",
              judged(drawn(twoBars(), order).bytes, ".png", "10,10 155,75"));
    // An SVG keeps its proportions.
    order.height = 30;
    EXPECT_EQ("PNG RGB 160x40 dots=96 bits=8 colors=3 255,255,255,255 255,0,0,255 0,0,255,255",
              judged(drawn(twoBars(), order).bytes, ".png", "10,10 45,5 115,35"));
}

TEST(PictureFiles, PngPicturesAreDrawnAsWell) {
    const Picture png{PictureForm::png, drawn(twoBars(), orderOf(DrawnForm::png)).bytes, 60, 30};
    DrawingOrder order = orderOf(DrawnForm::bmp);
    order.width = 120;
    EXPECT_EQ("BMP RGB 160x40 dots=96 bits=24", judged(drawn(png, order).bytes, ".bmp").substr(0, 30));
    EXPECT_EQ("TIFF RGB 80x40 dots=96 bits=0 colors=3 compression=tiff_lzw 255,0,0,255 0,0,255,255",
              judged(drawn(png, orderOf(DrawnForm::tif)).bytes, ".tif", "0,0 79,39"));
}

TEST(PictureFiles, EqualPicturesGiveEqualBytes) {
    for (const DrawnForm form :
         {DrawnForm::png, DrawnForm::jpg, DrawnForm::bmp, DrawnForm::tif, DrawnForm::eps, DrawnForm::emf}) {
        DrawingOrder order = orderOf(form, DrawnDepth::colors16);
        order.preview = true;
        const std::string first = drawn(someText(), order).bytes;
        EXPECT_FALSE(first.empty());
        EXPECT_EQ(first, drawn(someText(), order).bytes);
    }
}

TEST(EpsFiles, AreOnePageWithTheBoxOfWhatIsDrawn) {
    DrawingOrder order = orderOf(DrawnForm::eps);
    EXPECT_EQ("EPS level=2 pages=1 dated=no fonts=no box=0,0,60,30 ghostscript=near",
              judged(drawn(twoBars(), order).bytes, ".eps"));
    const Picture corner = svgOf("<rect x='40' y='20' width='20' height='10'/>");
    EXPECT_EQ("EPS level=2 pages=1 dated=no fonts=no box=30,7,45,15 ghostscript=near",
              judged(drawn(corner, order).bytes, ".eps"));
    EXPECT_EQ("EPS level=2 pages=1 dated=no fonts=no box=0,0,60,30 ghostscript=0,0,0,0",
              judged(drawn(svgOf(""), order).bytes, ".eps"));
}

TEST(EpsFiles, HaveLettersAsCurvesOnWish) {
    if (!isInstalled("pdftotext")) GTEST_SKIP();
    DrawingOrder order = orderOf(DrawnForm::eps);
    order.curves = true;
    const std::string found = judged(drawn(someText(), order).bytes, ".eps", "words");
    EXPECT_EQ("EPS level=2 pages=1 dated=no fonts=no ", found.substr(0, found.find("box="))) << found;
    EXPECT_TRUE(found.ends_with("ghostscript=near words= named=")) << found;
}

TEST(EpsFiles, NameTheirFontsOtherwise) {
    if (!isInstalled("pdftotext")) GTEST_SKIP();
    const std::string file = drawn(someText(), orderOf(DrawnForm::eps)).bytes;
    EXPECT_NE(std::string::npos, file.find("\n%%DocumentNeededResources: font DejaVuSans\n"));
    EXPECT_NE(std::string::npos, file.find("(Income)["));
    const std::string found = judged(file, ".eps", "words");
    EXPECT_EQ("EPS level=2 pages=1 dated=no fonts=no ", found.substr(0, found.find("box="))) << found;
    EXPECT_TRUE(found.ends_with("ghostscript=near words=Income named=DejaVuSans")) << found;
}

TEST(EpsFiles, NameFontsForLettersOfManyKinds) {
    if (!isInstalled("pdftotext")) GTEST_SKIP();
    const Picture letters = svgOf(
        "<text x='2' y='12' font-family='DejaVu Sans' font-size='8'>(\xC3\xA4)\\ "
        "\xD0\x96\xD1\x83\xD0\xBA</text>"
        "<text x='2' y='30' font-family='DejaVu Sans' font-weight='bold' font-size='8'>\xE2\x88\x91 "
        "x</text>");
    const std::string found = judged(drawn(letters, orderOf(DrawnForm::eps)).bytes, ".eps", "words");
    EXPECT_TRUE(
        found.ends_with("words=(\xC3\xA4)\\,\xD0\x96\xD1\x83\xD0\xBA,\xE2\x88\x91,x "
                        "named=DejaVuSans,DejaVuSans-Bold"))
        << found;
}

TEST(EpsFiles, LookTheSameWithNamedFontsAndWithCurves) {
    const Picture picture = svgOf(
        "<defs><linearGradient id='g'><stop stop-color='red'/><stop offset='1' "
        "stop-color='blue'/></linearGradient>"
        "</defs><rect width='30' height='40' fill='url(#g)'/><path d='M40 5L75 35' stroke='green' "
        "stroke-width='3'/>"
        "<text x='34' y='24' font-family='DejaVu Sans' font-size='14'>Inc</text>");
    DrawingOrder order = orderOf(DrawnForm::eps);
    const std::string named = drawn(picture, order).bytes;
    order.curves = true;
    const std::string curves = drawn(picture, order).bytes;
    EXPECT_NE(named, curves);
    EXPECT_LT(std::stoi(rendered(named, curves)), 4);
}

TEST(EpsFiles, HaveAPreviewOnWish) {
    DrawingOrder order = orderOf(DrawnForm::eps);
    order.preview = true;
    EXPECT_EQ("EPS preview=TIFF:80x40:whole level=2 pages=1 dated=no fonts=no box=0,0,60,30 ghostscript=near",
              judged(drawn(twoBars(), order).bytes, ".eps"));
}

}  // namespace
