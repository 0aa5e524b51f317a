#include <gtest/gtest.h>
#include <stdlib.h>

#include <chrono>
#include <fstream>

#include "tests/unit/drawing/sample_pictures.h"

using namespace vexa::frontend;
using namespace vexa::frontend::test;

namespace {

const std::string kPlaceholderFrame = "128,128,128,255";

/// What stands instead is a frame of the size asked for.
void expectPlaceholder(const DrawnPicture& drawn) {
    EXPECT_NE("", drawn.reason);
    const std::string found = judged(drawn.bytes, ".png", "0,20");
    EXPECT_TRUE(found.starts_with("PNG RGB 80x40 ") && found.ends_with(kPlaceholderFrame)) << found;
}

TEST(HostilePictures, WhatCannotBeReadIsAPlaceholder) {
    expectPlaceholder(drawn({PictureForm::svg, "<svg", 60, 30}, orderOf(DrawnForm::png)));
    expectPlaceholder(drawn({PictureForm::svg, "", 60, 30}, orderOf(DrawnForm::png)));
    expectPlaceholder(drawn({PictureForm::svg, "<html/>", 60, 30}, orderOf(DrawnForm::png)));
    expectPlaceholder(drawn({PictureForm::png, "\x89PNG\r\n\x1a\nno", 60, 30}, orderOf(DrawnForm::png)));
}

TEST(HostilePictures, TheAlternativeTextIsInThePlaceholder) {
    const Picture broken{PictureForm::svg, "<svg", 225, 75};
    DrawingOrder order = orderOf(DrawnForm::png);
    order.width = 225;
    order.height = 75;
    const std::string one = beginDrawing(broken, {}, "Income & <more>", order)->finish().bytes;
    const std::string other = beginDrawing(broken, {}, "", order)->finish().bytes;
    EXPECT_NE(one, other);
    EXPECT_TRUE(judged(one, ".png").starts_with("PNG RGB 300x100 "));
}

TEST(HostilePictures, NothingOutsideIsFetched) {
    const std::string secret = temporaryFile("_secret.svg");
    const std::string style = temporaryFile("_secret.css");
    std::ofstream(secret) << kOpening << "<rect width='80' height='40' fill='#00ff00'/></svg>";
    std::ofstream(style) << "rect{fill:#00ff00}";
    const std::string css = "<style>@import url('file://" + style + "');</style>";
    const Picture picture =
        svgOf("<image width='80' height='40' href='file://" + secret +
              "'/><image width='80' height='40' href='" + secret + "'/><use href='file://" + secret +
              "#x'/>" + css + "<xi:include xmlns:xi='http://www.w3.org/2001/XInclude' href='file://" +
              secret + "'/>" + "<rect width='20' height='40' fill='#ff0000'/>");
    const DrawnPicture file = drawn(picture, orderOf(DrawnForm::png), "@import url('file://" + style + "');");
    EXPECT_EQ("", file.reason);
    EXPECT_EQ("PNG RGB 80x40 dots=96 bits=8 colors=2 255,0,0,255 255,255,255,255",
              judged(file.bytes, ".png", "10,20 60,20"));
    std::remove(secret.c_str());
    std::remove(style.c_str());
}

TEST(HostilePictures, EntitiesAreNotFetchedAndDoNotMultiply) {
    std::string bomb = "<!DOCTYPE svg [<!ENTITY a \"aaaaaaaaaa\">";
    for (char each = 'b'; each < 'm'; ++each) {
        bomb += std::string("<!ENTITY ") + each + " \"";
        for (int i = 0; i < 10; ++i) bomb += std::string("&") + static_cast<char>(each - 1) + ";";
        bomb += "\">";
    }
    const Picture picture{PictureForm::svg, bomb + "]>" + kOpening + "<text>&l;</text></svg>", 60, 30};
    const auto start = std::chrono::steady_clock::now();
    const DrawnPicture file = drawn(picture, orderOf(DrawnForm::png));
    EXPECT_FALSE(file.bytes.empty());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(180));
}

TEST(HostilePictures, NestingIsBounded) {
    std::string deep;
    for (int i = 0; i < 100'000; ++i) deep += "<g>";
    for (int i = 0; i < 100'000; ++i) deep += "</g>";
    expectPlaceholder(drawn(svgOf(deep), orderOf(DrawnForm::png)));
}

TEST(HostilePictures, TimeIsBounded) {
    std::string slow = "<filter id='f' x='0' y='0' width='1' height='1'>";
    for (int i = 0; i < 4000; ++i) slow += "<feTurbulence baseFrequency='0.1' numOctaves='1000'/>";
    slow += "</filter><rect width='80' height='40' filter='url(#f)'/>";
    Picture picture = svgOf(slow);
    DrawingOrder order = orderOf(DrawnForm::png);
    order.seconds = 1;
    const auto start = std::chrono::steady_clock::now();
    const DrawnPicture file = drawn(picture, order);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
    expectPlaceholder(file);
    EXPECT_EQ("Drawing it took longer than 1 seconds.", file.reason);
}

TEST(HostilePictures, SizesAreBounded) {
    DrawingOrder order = orderOf(DrawnForm::png);
    order.width = 60'000;
    order.height = 30'000;
    const DrawnPicture file = drawn(twoBars(), order);
    EXPECT_EQ("It has too many pixels.", file.reason);
    EXPECT_TRUE(judged(file.bytes, ".png").starts_with("PNG RGB 3000x1500 "));
}

}  // namespace
