// Natural sizes of pictures, and what is no picture.

#include "frontend/import/pictures.h"

#include <gtest/gtest.h>

#include "frontend/package/base64.h"
#include "tests/unit/import/import_samples.h"

namespace vexa::frontend {
namespace {

struct SvgSize {
    const char* attributes;
    double width;
    double height;
};

class SvgSizes : public testing::TestWithParam<SvgSize> {};

TEST_P(SvgSizes, AreInPoints) {
    std::string reason;
    const auto picture = readSvg("<svg " + std::string(GetParam().attributes) + "/>", reason);
    ASSERT_NE(picture, nullptr) << reason;
    EXPECT_DOUBLE_EQ(picture->width, GetParam().width);
    EXPECT_DOUBLE_EQ(picture->height, GetParam().height);
}

INSTANTIATE_TEST_SUITE_P(Units, SvgSizes,
                         testing::Values(SvgSize{"width='100' height='40px'", 75, 30},
                                         SvgSize{"width='2in' height='36pt'", 144, 36},
                                         SvgSize{"width='2.54cm' height='25.4mm'", 72, 72},
                                         SvgSize{"width=' 1e2 px ' height='2pc'", 75, 24},
                                         SvgSize{"viewBox='0 0 200 100'", 150, 75},
                                         SvgSize{"width='100' viewBox='0,0,200,100'", 75, 37.5},
                                         SvgSize{"height='100%' width='50%' viewBox='0 0 8 4'", 6, 3},
                                         SvgSize{"height='4' viewBox='0 0 8 4'", 6, 3},
                                         SvgSize{"width='-5' height='0'", 225, 112.5},
                                         SvgSize{"", 225, 112.5}));

TEST(Pictures, TakeAnSvgAsItIs) {
    std::string reason;
    const std::string text =
        "\xEF\xBB\xBF<?xml version='1.0'?><!DOCTYPE svg PUBLIC 'a' 'b'><!-- c -->"
        "<s:svg xmlns:s='http://www.w3.org/2000/svg' width='8' height='4'><s:g/></s:svg>\n";
    const auto picture = readPicture(text, reason);
    ASSERT_NE(picture, nullptr) << reason;
    EXPECT_EQ(picture->bytes, text);
    EXPECT_EQ(picture->width, 6);
}

TEST(Pictures, RefuseWhatIsNoSvg) {
    std::string reason;
    EXPECT_EQ(readSvg("<svg><g></svg>", reason), nullptr);
    EXPECT_EQ(reason, "This is not an SVG: Start-end tags mismatch (byte 10).");
    EXPECT_EQ(readSvg("<html/>", reason), nullptr);
    EXPECT_EQ(readSvg("", reason), nullptr);
    EXPECT_EQ(readSvg("<svg>\xFF</svg>", reason), nullptr);
    EXPECT_EQ(reason, "The SVG is not in UTF-8. Save it in UTF-8.");
}

TEST(Pictures, TakePixelsOfAPng) {
    std::string reason;
    const auto picture = readPicture(samplePng(100, 40), reason);
    ASSERT_NE(picture, nullptr) << reason;
    EXPECT_EQ(picture->form, PictureForm::png);
    EXPECT_EQ(picture->width, 75);
    EXPECT_EQ(picture->height, 30);
}

TEST(Pictures, RefuseAPngThatIsCutOff) {
    const std::string whole = samplePng(10, 10);
    std::string reason;
    for (std::size_t length = 0; length < whole.size() - 4; ++length) {
        EXPECT_EQ(readPng(whole.substr(0, length), reason), nullptr) << length;
    }
    EXPECT_EQ(reason, "The PNG is cut off or damaged.");
    EXPECT_EQ(readPng(samplePng(0, 10), reason), nullptr);
    EXPECT_EQ(reason, "The PNG is cut off or damaged.");
    EXPECT_EQ(readPng("GIF89a", reason), nullptr);
    EXPECT_EQ(reason, "This is not a PNG.");
}

TEST(Pictures, OfPngAreCheckedByTheirChecksums) {
    constexpr std::size_t headEnd = 33;  // signature and the first chunk
    const std::string whole = samplePng(10, 10);
    std::string reason;
    ASSERT_NE(readPng(whole, reason), nullptr) << reason;
    std::string damaged = whole;
    damaged[headEnd - 4] ^= '\1';
    EXPECT_EQ(readPng(damaged, reason), nullptr);
    EXPECT_EQ(reason, "The PNG is damaged: a checksum does not fit what stands at byte 8.");
    damaged = whole;
    damaged[20] ^= '\1';  // the height
    EXPECT_EQ(readPng(damaged, reason), nullptr);
    // What draws it may pass over a comment, and so over one that is damaged.
    const std::string comment("\0\0\0\1tEXtx0000", 13);
    EXPECT_NE(readPng(whole.substr(0, headEnd) + comment + whole.substr(headEnd), reason), nullptr) << reason;
    const std::string unknown("\0\0\0\1TEXtx0000", 13);
    EXPECT_EQ(readPng(whole.substr(0, headEnd) + unknown + whole.substr(headEnd), reason), nullptr);
    EXPECT_EQ(reason, "The PNG is damaged: a checksum does not fit what stands at byte 33.");
}

TEST(Base64, GoesBothWays) {
    std::string bytes;
    for (std::size_t length = 0; length < 40; ++length) {
        std::string decoded;
        EXPECT_TRUE(decodeBase64(encodeBase64(bytes), decoded));
        EXPECT_EQ(decoded, bytes);
        bytes += static_cast<char>(length * 37 + 200);
    }
    EXPECT_EQ(encodeBase64("any carnal pleas"), "YW55IGNhcm5hbCBwbGVhcw==");
    EXPECT_TRUE(decodeBase64("YW 55\nIGNhcm5hbCBwbGVhcw", bytes));
    EXPECT_EQ(bytes, "any carnal pleas");
    for (const char* const bad : {"A", "AA=", "A===", "AA==A", "A*AA", "AAAA="})
        EXPECT_FALSE(decodeBase64(bad, bytes)) << bad;
}

}  // namespace
}  // namespace vexa::frontend
