#include "apps/rendering/text_style.h"

#include <gtest/gtest.h>

#include "apps/rendering/table_rendering.h"
#include "tests/unit/rendering/example_tables.h"

namespace vexa::rendering {
namespace {

TEST(TextStyle, ShowsWhatTheTerminalCan) {
    TextStyle style;
    style.bold = style.underline = true;
    style.color = tables::Color{0xff8000};
    style.background = tables::Color{0x000000};
    const RenderOptions plain;
    RenderOptions emphasis;
    emphasis.styled = true;
    RenderOptions palette = emphasis;
    palette.colors = ColorDepth::palette;
    RenderOptions full = emphasis;
    full.colors = ColorDepth::full;
    EXPECT_EQ(styled("x", style, plain), "x");
    EXPECT_EQ(styled("x", style, emphasis), "\x1b[1;4mx\x1b[0m");
    EXPECT_EQ(styled("x", style, palette), "\x1b[1;4;38;5;208;48;5;16mx\x1b[0m");
    EXPECT_EQ(styled("x", style, full), "\x1b[1;4;38;2;255;128;0;48;2;0;0;0mx\x1b[0m");
    EXPECT_EQ(styled("", style, full), "");
    EXPECT_EQ(styled("x", {}, full), "x");
}

TEST(TextStyle, FindsTheNearestColourOfThePalette) {
    const std::pair<std::uint32_t, int> cases[] = {{0x000000, 16},  {0xffffff, 231}, {0xff0000, 196},
                                                   {0x00ff00, 46},  {0x0000ff, 21},  {0x808080, 244},
                                                   {0x404040, 238}, {0xffc800, 220}, {0xafafaf, 145}};
    for (const auto& [rgb, expected] : cases) EXPECT_EQ(paletteColor({rgb}), expected) << std::hex << rgb;
}

tables::Table coloured() {
    return built("", [](BpPivotTable& draft) {
        BpDimension rows = dimension(draft, "", 0);
        rows.Category(plain("1")).Cell(plain("x")).Color("RED");
        rows.Category(plain("2")).Cell(plain("wide")).Background("#0000FF").Bold();
    });
}

TEST(TextStyle, OfCellsIsShownInTables) {
    EXPECT_EQ(renderTable(coloured(), {0, false, true, ColorDepth::full}),
              "+---+------+\n"
              "| 1 | \x1b[38;2;255;0;0mx\x1b[0m    |\n"
              "| 2 |\x1b[1;48;2;0;0;255m wide \x1b[0m|\n"
              "+---+------+\n");
    EXPECT_EQ(renderTable(coloured(), {0, false, true}),
              "+---+------+\n"
              "| 1 | x    |\n"
              "| 2 | \x1b[1mwide\x1b[0m |\n"
              "+---+------+\n");
    EXPECT_EQ(renderTable(coloured(), {0, false, false}).find('\x1b'), std::string::npos);
}

TEST(TextStyle, OfTheTableStandsBeforeWhatATerminalEmphasises) {
    const tables::Table table = built("Title", [](BpPivotTable& draft) {
        dimension(draft, "Row", 0).Category(plain("1")).Cell(plain("x"));
    });
    tables::CellStyle own;
    own.bold = false;
    own.italic = true;
    tables::TableStyle style = *table.style;
    for (const tables::Area area : {tables::Area::title, tables::Area::corner}) {
        style.setArea(area, style.intern(own));
    }
    const tables::Table restyled = tables::makeTable(table.data, *table.view, style);
    EXPECT_EQ(renderTable(restyled, {0, false, true}),
              "\x1b[3mTitle\x1b[0m\n"
              "+-----+---+\n"
              "| \x1b[3mRow\x1b[0m |   |\n"
              "+-----+---+\n"
              "| 1   | x |\n"
              "+-----+---+\n");
}

}  // namespace
}  // namespace vexa::rendering
