// Reading parsed values the way commands do.

#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "backend/syntax/command_spec.h"
#include "backend/tokens/token_sequence.h"
#include "tests/unit/syntax/parse_picture.h"

namespace vexa {
namespace {

/// A value made of the tokens of `text`.
struct Value {
    explicit Value(std::string text) : command{std::move(text), 0, "", 1}, tokens(command) {}

    [[nodiscard]] ParamObj operator()() const { return {"P", nullptr, tokens.tokens()}; }

    CommandText command;
    CommandTokens tokens;
};

TEST(ReadingValues, TakesOneTextInEachWay) {
    struct Expected {
        const char* value;
        const char* token;    // getStringToken
        const char* generic;  // getStringGeneric, or null
        const char* orLiteral;
        bool isLiteral;
    };
    constexpr Expected kCases[] = {
        {"word", "word", "word", "word", false}, {"'Lit'", "Lit", "Lit", "Lit", true},
        {"12", "", "12", nullptr, false},        {"*", "*", nullptr, nullptr, false},
        {"ALL", "ALL", nullptr, nullptr, false}, {"a b", "", nullptr, nullptr, false},
        {"", "", nullptr, nullptr, false},       {"''", "", "", "", true},
    };
    for (const Expected& expected : kCases) {
        SCOPED_TRACE(expected.value);
        const Value value(expected.value);
        EXPECT_EQ(value().getStringToken(), expected.token);
        std::string_view text = "untouched";
        EXPECT_EQ(value().getStringGeneric(text), expected.generic != nullptr);
        EXPECT_EQ(text, expected.generic == nullptr ? "untouched" : expected.generic);
        text = "untouched";
        bool isLiteral = false;
        EXPECT_EQ(value().getStringOrLiteral(text, isLiteral), expected.orLiteral != nullptr);
        EXPECT_EQ(text, expected.orLiteral == nullptr ? "untouched" : expected.orLiteral);
        EXPECT_EQ(isLiteral, expected.isLiteral);
    }
    EXPECT_EQ(Value("f8.2")().getUpStringToken(), "F8.2");
}

TEST(ReadingValues, ComparesWithoutRegardToCase) {
    EXPECT_TRUE(Value("yes")().isStringValue("YES"));
    EXPECT_TRUE(Value("'Yes'")().isStringValueCase("yEs"));
    EXPECT_TRUE(Value("all")().isStringValue("ALL"));
    EXPECT_FALSE(Value("yes no")().isStringValue("YES"));
    EXPECT_FALSE(Value("")().isStringValue(""));
    EXPECT_TRUE(AreStringsEqualCase("Ä", "ä"));
    EXPECT_FALSE(AreStringsEqualCase("a", "ab"));
}

TEST(ReadingValues, KnowsOperators) {
    EXPECT_TRUE(Value("*")().isOperatorValue(10));
    EXPECT_TRUE(Value("all")().isOperatorValue(35));
    EXPECT_FALSE(Value("'*'")().isOperatorValue(10));
    EXPECT_FALSE(Value("* *")().isOperatorValue(10));
    EXPECT_FALSE(Value("a")().isOperatorValue(0));
}

TEST(ReadingValues, ReadsNumbersAndLists) {
    EXPECT_EQ(Value("12")().getIntegerValue(), 12);
    EXPECT_EQ(Value("12.5")().getIntegerValue(), std::nullopt);
    EXPECT_EQ(Value("12.5")().getDoubleValue(), 12.5);
    EXPECT_EQ(Value("1 2")().getDoubleValue(), std::nullopt);
    std::vector<double> numbers;
    EXPECT_TRUE(Value("1, 2.5 3")().getNumberList(numbers));
    EXPECT_EQ(numbers, (std::vector<double>{1, 2.5, 3}));
    EXPECT_FALSE(Value("1 a")().getNumberList(numbers));
    std::vector<std::string_view> texts;
    const Value mixed("'a', b ALL");
    EXPECT_TRUE(mixed().getStringList(texts));
    EXPECT_EQ(texts, (std::vector<std::string_view>{"a", "b", "ALL"}));
    EXPECT_FALSE(Value("a 5")().getStringList(texts));
    const Value literals("'a' 5 b 'c'");
    literals().getLiterals(texts);
    EXPECT_EQ(texts, (std::vector<std::string_view>{"a", "c"}));
}

TEST(ReadingValues, WalksTokens) {
    const Value value("a = ( 'b' ] 3");
    EXPECT_TRUE(value().isTokenList());
    EXPECT_FALSE(ParamObj().isTokenList());
    ASSERT_EQ(value().getTokenListSize(), 6U);
    EXPECT_EQ(value().getTokenObj(1).getOperatorCode(), 3);
    EXPECT_EQ(value().getTokenObj(2).getOperatorCode(), 13);
    EXPECT_EQ(value().getTokenObj(4).getOperatorCode(), 37);
    EXPECT_EQ(value().joinedTokens(), "a = ( b ] 3");
}

UPSpecTypes::ParamSpec specOf(int code) { return static_cast<UPSpecTypes::ParamSpec>(code); }

std::string qualifiersOf(int code, const std::string& text) {
    const Value value(text);
    std::vector<QualifierObj> qualifiers;
    const bool read = value().getQualifiers(ParamDescriptor("P", specOf(code), false, true), qualifiers);
    std::string picture = read ? "" : "not read: ";
    for (const QualifierObj& each : qualifiers) {
        picture += std::string(each.name()) + "{" + pictureOf(each.getTokenList()) + "}";
    }
    return picture;
}

TEST(ReadingQualifiers, ReadsEachForm) {
    EXPECT_EQ(qualifiersOf(26, "(COLPOSITION=2, COLLABEL='a' X Y=)"), "COLPOSITION{2}COLLABEL{'a'}X{}Y{}");
    EXPECT_EQ(qualifiersOf(26, ""), "");
    EXPECT_EQ(qualifiersOf(26, "()"), "");
    EXPECT_EQ(qualifiersOf(26, "(A=1 B=(2, 3))"), "A{1}B{2 3}");
    EXPECT_EQ(qualifiersOf(26, "(A 1 B 'x' C D= E=2 F *)"), "not read: A{1}B{'x'}C{}D{}E{2}F{}");
    EXPECT_EQ(qualifiersOf(26, "(A=1 5)"), "not read: A{1}");
    EXPECT_EQ(qualifiersOf(27, "POINTS(10, -5)"), "POINTS{10 -5}");
    EXPECT_EQ(qualifiersOf(27, "INCHES 1"), "INCHES{1}");
    EXPECT_EQ(qualifiersOf(27, "LASTROW"), "LASTROW{}");
    EXPECT_EQ(qualifiersOf(27, "5"), "not read: ");
    EXPECT_EQ(qualifiersOf(28, "BEGINS('a' 'b') EXACT('c')"), "BEGINS{'a' 'b'}EXACT{'c'}");
    EXPECT_EQ(qualifiersOf(28, "BEGINS('a'"), "not read: ");
}

TEST(ReadingQualifiers, CountsNoSeparatorsAndOutlivesTheList) {
    const Value value("POINTS(10, -5)");
    std::optional<QualifierObj> kept;
    {
        const std::optional<QualifierObj> read = value().getQualifier();
        ASSERT_TRUE(read);
        kept = read;  // a copy shares the tokens
    }
    EXPECT_EQ(kept->name(), "POINTS");
    ASSERT_EQ(kept->getTokenListSize(), 2U);
    EXPECT_EQ(kept->getTokenObj(1).getDoubleValue(), -5.0);
    EXPECT_EQ(value().getTokenListSize(), 6U);  // the value itself keeps them
    EXPECT_FALSE(Value("TOP(1) 2")().getQualifier());
    EXPECT_EQ(Value("TOP 5")().getQualifier()->getIntegerValue(), 5);
}

}  // namespace
}  // namespace vexa
