// Which PNGs can be copied because they can be shown.
#include "frontend/package/png_data.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <cstdint>
#include <string>
#include <vector>

namespace vexa::frontend {
namespace {

std::string number(std::uint64_t value) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift & 0xFFU);
    return bytes;
}

std::string chunk(const std::string& name, const std::string& data) {
    const std::string all = name + data;
    return number(data.size()) + all +
           number(crc32(0, reinterpret_cast<const Bytef*>(all.data()), static_cast<uInt>(all.size())));
}

struct Head {
    std::uint64_t width = 0;
    std::uint64_t height = 0;
    char depth = 8;
    char color = 0;
    char interlace = 0;
};

std::string packed(std::size_t bytes) {
    const std::vector<Bytef> rows(bytes);
    uLongf length = compressBound(static_cast<uLong>(bytes));
    std::string result(length, '\0');
    compress(reinterpret_cast<Bytef*>(result.data()), &length, rows.data(), static_cast<uLong>(bytes));
    result.resize(length);
    return result;
}

/// `pieces` of data, each in a chunk of its own.
std::string png(const Head& head, const std::vector<std::string>& pieces) {
    std::string data = number(head.width) + number(head.height) + head.depth + head.color;
    data += std::string(2, '\0') + head.interlace;
    std::string file = "\x89PNG\r\n\x1A\n" + chunk("IHDR", data) + chunk("tEXt", "Title");
    for (const std::string& piece : pieces) file += chunk("IDAT", piece);
    return file + chunk("IEND", "");
}

TEST(PngData, IsCountedByColourAndDepth) {
    struct Case {
        Head head;
        std::size_t bytes;
    };
    const std::vector<Case> cases{
        {{10, 3, 1, 0}, 3 * (1 + 2)},
        {{10, 3, 8, 0}, 3 * (1 + 10)},
        {{10, 3, 8, 2}, 3 * (1 + 30)},
        {{10, 3, 4, 3}, 3 * (1 + 5)},
        {{10, 3, 16, 4}, 3 * (1 + 40)},
        {{10, 3, 16, 6}, 3 * (1 + 80)},
        {{1, 1, 8, 0, 1}, 2},
        {{5, 5, 8, 0, 1}, 2 + 2 + 3 + 2 * 2 + 4 + 3 * 3 + 2 * 6},
        {{300'000, 1, 8, 2}, 1 + 900'000},
    };
    for (const Case& each : cases) {
        const std::string data = packed(each.bytes);
        EXPECT_TRUE(hasAllPixels(png(each.head, {data}))) << each.bytes;
        EXPECT_TRUE(hasAllPixels(png(each.head, {data.substr(0, 1), "", data.substr(1)}))) << each.bytes;
        EXPECT_FALSE(hasAllPixels(png(each.head, {packed(each.bytes - 1)}))) << each.bytes;
    }
}

TEST(PngData, IsNotThereWhenDamaged) {
    const Head head{40, 40, 8, 2};
    std::string data = packed(40 * 121);
    EXPECT_FALSE(hasAllPixels(png(head, {"garbage!"})));
    EXPECT_FALSE(hasAllPixels(png(head, {data.substr(0, data.size() / 2)})));
    EXPECT_FALSE(hasAllPixels(png(head, {})));
    data[0] = 'y';
    EXPECT_FALSE(hasAllPixels(png(head, {data})));
    EXPECT_FALSE(hasAllPixels(""));
    EXPECT_FALSE(hasAllPixels("\x89PNG\r\n\x1A\n"));
}

TEST(PngData, NeedsAHeadThatCanBe) {
    const std::string data = packed(100);
    for (const Head& head : {Head{0, 1}, Head{1, 0}, Head{1, 1, 3}, Head{1, 1, 8, 1}, Head{1, 1, 8, 9},
                             Head{0xFFFFFFFF, 0xFFFFFFFF, 16, 6}}) {
        EXPECT_FALSE(hasAllPixels(png(head, {data}))) << head.width << ' ' << head.height;
    }
}

// Nobody waits for what is only said to be there.
TEST(PngData, IsNotLookedThroughWhenThereIsTooMuch) {
    EXPECT_TRUE(hasAllPixels(png({60'000, 60'000, 8, 2}, {packed(100)})));
}

}  // namespace
}  // namespace vexa::frontend
