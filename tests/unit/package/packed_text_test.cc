// Long texts that are held packed.
#include "frontend/package/packed_text.h"

#include <gtest/gtest.h>

#include <string>

namespace vexa::frontend {
namespace {

std::string numbered(std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) text += "row " + std::to_string(i) + ";";
    return text;
}

TEST(PackedText, TakesLongTextsOnly) {
    PackedText packed;
    std::string text = "abc";
    packed.take(text);
    EXPECT_EQ(text, "abc");
    text = std::string(PackedText::pieceBytes, 'x');
    packed.take(text);
    EXPECT_EQ(text, "");
    EXPECT_EQ(packed.size(), PackedText::pieceBytes);
    EXPECT_EQ(packed.held(), PackedText::pieceBytes);
}

TEST(PackedText, GivesBackWhatItTook) {
    PackedText packed(1000);
    std::string whole;
    std::string text;
    for (std::size_t i = 0; i < 50; ++i) {
        text = i % 7 == 3 ? std::string() : numbered(i * 10);
        whole += text;
        packed.takeAll(text);
        EXPECT_EQ(text, "");
    }
    EXPECT_EQ(packed.size(), whole.size());
    std::string back;
    EXPECT_TRUE(packed.release(gatherInto(back)));
    EXPECT_EQ(back, whole);
    EXPECT_FALSE(packed.next(text));
}

TEST(PackedText, KeepsPiecesApart) {
    PackedText packed(4);
    for (std::string each : {"first", "", "third piece, third piece, third piece"}) packed.takeAll(each);
    std::string text;
    ASSERT_TRUE(packed.next(text));
    EXPECT_EQ(text, "first");
    ASSERT_TRUE(packed.next(text));
    EXPECT_EQ(text, "");
    ASSERT_TRUE(packed.next(text));
    EXPECT_EQ(text, "third piece, third piece, third piece");
    EXPECT_FALSE(packed.next(text));
}

TEST(PackedText, HoldsLittleOfWhatIsAlike) {
    PackedText packed(1 << 20);
    for (int i = 0; i < 20; ++i) {
        std::string text;
        for (int row = 0; row < 40'000; ++row) text += "<td class=\"n\">" + std::to_string(row) + "</td>";
        packed.takeAll(text);
    }
    EXPECT_GT(packed.size(), std::size_t{15} << 20U);
    EXPECT_LT(packed.held(), packed.size() / 2);
}

TEST(PackedText, EndsWhereTheSinkFails) {
    PackedText packed;
    for (std::string each : {"one", "two"}) packed.takeAll(each);
    int calls = 0;
    const PackageResult result = packed.release([&](std::string_view) {
        ++calls;
        return PackageResult(PackageProblem::cannotWrite);
    });
    EXPECT_EQ(result.problem, PackageProblem::cannotWrite);
    EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace vexa::frontend
