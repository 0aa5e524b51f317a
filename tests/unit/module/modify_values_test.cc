// How a modification reads numbers, texts, colours and lengths.
#include <gtest/gtest.h>

#include <optional>

#include "backend/syntax/universal_parser.h"
#include "backend/tokens/command_text.h"
#include "backend/tokens/token_sequence.h"
#include "module/frame/grammar.h"
#include "module/modify/color_value.h"
#include "module/modify/parameter_values.h"

namespace vexa {
namespace {

using Spec = UPSpecTypes::ParamSpec;

constexpr ParameterRow kRows[] = {optionalParameter("P", Spec::tokens),
                                  optionalParameter("C", Spec::tokens).of(kColorWords)};
constexpr SubcommandRow kGrammar[] = {{"", UPSpecTypes::SubComSpec::keywordParameters, false, false, kRows}};

/// A command that was parsed; P takes any tokens, C a colour.
class Parsed {
  public:
    explicit Parsed(const std::string& text) : text_{text, 0, "test.vxs", 1}, scope_(text_) {
        CommandDescriptor descriptor("TEST");
        describe(descriptor, kGrammar);
        tokens_.emplace(true);
        EXPECT_EQ(UniversalParser(*tokens_, spec_, descriptor).getCommandSpecifications(), 0) << text;
    }

    [[nodiscard]] const SubComObj& leading() const { return *spec_.getSubComObj(""); }
    [[nodiscard]] const ParamObj& value(std::string_view name) const { return *leading().getParamObj(name); }

  private:
    CommandText text_;
    CurrentCommandScope scope_;
    std::optional<VEXA_TokenSequence> tokens_;
    CommandSpec spec_;
};

TEST(LeadingInteger, IsTheNumberThatATextBeginsWith) {
    const std::pair<std::string_view, std::int32_t> cases[] = {{"", 0},
                                                               {"0", 0},
                                                               {"7", 7},
                                                               {"007", 7},
                                                               {"12abc", 12},
                                                               {"abc12", 0},
                                                               {" \t\n\v\f\r12", 12},
                                                               {"12 13", 12},
                                                               {"+5", 5},
                                                               {"-5", -5},
                                                               {"- 5", 0},
                                                               {"--5", 0},
                                                               {"+-5", 0},
                                                               {"-", 0},
                                                               {"+", 0},
                                                               {"2.9", 2},
                                                               {".9", 0},
                                                               {"1e3", 1},
                                                               {"\xC2\xA0"
                                                                "5",
                                                                0},
                                                               {"2147483646", 2147483646},
                                                               {"2147483647", 2147483647},
                                                               {"2147483648", 2147483647},
                                                               {"-2147483647", -2147483647},
                                                               {"-2147483648", -2147483647 - 1},
                                                               {"-2147483649", -2147483647 - 1},
                                                               {"18446744073709551617", 2147483647},
                                                               {"-18446744073709551617", -2147483647 - 1}};
    for (const auto& [text, number] : cases) {
        EXPECT_EQ(leadingInteger(text), number) << text;
    }
    EXPECT_EQ(leadingInteger(std::string(100000, '9')), 2147483647);
    EXPECT_EQ(leadingInteger(std::string_view("12\0"
                                              "3",
                                              4)),
              12);
    EXPECT_EQ(leadingInteger(std::string_view("12345").substr(0, 2)), 12) << "reads beyond the view";
}

TEST(TextValues, AreOneQuotedTextOrOneWord) {
    const struct {
        const char* command;
        const char* text;
        const char* upper;
    } cases[] = {{"P='a b'", "a b", "A B"}, {"P=word", "word", "WORD"},
                 {"P=all", "all", "ALL"},   {"P='ALL'", "ALL", "ALL"},
                 {"P=5", "", ""},           {"P=a b", "", ""},
                 {"P=(a)", "", ""},         {"P='a'+'b'", "ab", "AB"},
                 {"P=''", "", ""},          {"", "", ""}};
    for (const auto& each : cases) {
        const Parsed parsed(each.command);
        EXPECT_EQ(textOf(parsed.leading(), "P"), each.text) << each.command;
        EXPECT_EQ(upperTextOf(parsed.leading(), "P"), each.upper) << each.command;
    }
    EXPECT_EQ(upperTextOf(Parsed("P=,").leading(), "P"), ",") << "an operator";
    EXPECT_EQ(textOf(Parsed("P=,").leading(), "P"), "") << "an operator";
}

TEST(TextValues, TellQuotedTextsFromWords) {
    const auto isLiteral = [](const char* command) {
        const Parsed parsed(command);
        const std::optional<TextValue> value = textValue(parsed.value("P"));
        return value ? std::optional(value->isLiteral) : std::nullopt;
    };
    EXPECT_EQ(isLiteral("P='a'"), true);
    EXPECT_EQ(isLiteral("P=''"), true);
    EXPECT_EQ(isLiteral("P=a"), false);
    EXPECT_EQ(isLiteral("P=ALL"), false);
    EXPECT_EQ(isLiteral("P=5"), std::nullopt);
    EXPECT_EQ(isLiteral("P=[a]"), std::nullopt);
    EXPECT_EQ(isLiteral("P"), std::nullopt);
}

TEST(TextValues, AreExpandedBeforeTheyAreEscaped) {
    EXPECT_EQ(expandedTextOf(Parsed("P='a<b>&)date'").leading(), "P"), "a&lt;b&gt;&amp;)date");
    EXPECT_EQ(expandedTextOf(Parsed("").leading(), "P"), "");
}

std::optional<Color> colorOf(const std::string& value) {
    const Parsed parsed("C=" + value);
    Color color{7, 7, 7};
    return ParseColorValue(parsed.value("C"), color) ? std::optional(color) : std::nullopt;
}

void expectColor(const std::string& value, std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
    const auto color = colorOf(value);
    ASSERT_TRUE(color) << value;
    EXPECT_EQ(color->red, red) << value;
    EXPECT_EQ(color->green, green) << value;
    EXPECT_EQ(color->blue, blue) << value;
}

TEST(ColorValue, KeywordsInAnyCase) {
    expectColor("BLACK", 0, 0, 0);
    expectColor("BLUE", 0, 0, 255);
    expectColor("CYAN", 0, 255, 255);
    expectColor("DARKGRAY", 64, 64, 64);
    expectColor("GRAY", 128, 128, 128);
    expectColor("GREEN", 0, 255, 0);
    expectColor("LIGHTGRAY", 192, 192, 192);
    expectColor("MAGENTA", 255, 0, 255);
    expectColor("ORANGE", 255, 200, 0);
    expectColor("PINK", 255, 175, 175);
    expectColor("RED", 255, 0, 0);
    expectColor("WHITE", 255, 255, 255);
    expectColor("YELLOW", 255, 255, 0);
    expectColor("oRange", 255, 200, 0);
    expectColor("'pink'", 255, 175, 175);
}

TEST(ColorValue, Triples) {
    expectColor("RGB(255 0 0)", 255, 0, 0);
    expectColor("rgb(0 128 255)", 0, 128, 255);
    expectColor("Rgb ( 1 2 3 )", 1, 2, 3);
    // Blue is read without a test.
    expectColor("RGB(1 2 word)", 1, 2, 0);
    expectColor("RGB(1 2 2.9)", 1, 2, 2);
    expectColor("RGB(1 2 '3x')", 1, 2, 3);
    expectColor("RGB(1 2 ALL)", 1, 2, 0);
}

TEST(ColorValue, EverythingElseIsNone) {
    for (const char* const value : {"GREY",
                                    "DARKGREY",
                                    "LIGHTGREY",
                                    "RGB",
                                    "RGB()",
                                    "RGB(1 2)",
                                    "RGB(1 2 3 4)",
                                    "RGB(1,2,3)",
                                    "RGB(256 0 0)",
                                    "RGB(0 256 0)",
                                    "RGB(0 0 256)",
                                    "RGB(-1 0 0)",
                                    "RGB(0 -1 0)",
                                    "RGB(0 0 -1)",
                                    "RGB(1.5 0 0)",
                                    "RGB(0 1.5 0)",
                                    "RGB(a 0 0)",
                                    "RGB('1' 0 0)",
                                    "'RGB'(1 2 3)",
                                    "RGB 1 2 3",
                                    "RGB[1 2 3]",
                                    "RGX(1 2 3)",
                                    "RED BLUE",
                                    "PURPLE",
                                    "5",
                                    "''",
                                    "RGB(0 0 99999999999)"}) {
        EXPECT_FALSE(colorOf(value)) << value;
    }
}

TEST(ColorValue, AppendsItsThreeAttributes) {
    std::string request;
    appendColor({1, 0, 255}, "text", request);
    EXPECT_EQ(request, " textRed=\"1\" textGreen=\"0\" textBlue=\"255\"");
}

TEST(Points, OfTheUnits) {
    EXPECT_EQ(pointsOfUnit("CENTIMETERS"), 28.3464567);
    EXPECT_EQ(pointsOfUnit("inches"), 72.0);
    EXPECT_EQ(pointsOfUnit("Points"), 1.0);
    for (const char* const unit : {"", "PERCENT", "PIXELS", "POINT", "INCHESX"}) {
        EXPECT_EQ(pointsOfUnit(unit), std::nullopt) << unit;
    }
}

}  // namespace
}  // namespace vexa
