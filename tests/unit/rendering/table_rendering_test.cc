#include "apps/rendering/table_rendering.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "backend/text/text_width.h"
#include "tests/unit/rendering/example_tables.h"
#include "tests/unit/strings/installed_texts.h"

namespace vexa {
namespace {

using rendering::renderNotes;
using rendering::renderTable;

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines(1);
    for (const char character : text) {
        if (character == '\n') {
            lines.emplace_back();
        } else {
            lines.back() += character;
        }
    }
    lines.pop_back();
    return lines;
}

TEST(TextRendering, ItsOwnWordsAreInTheLanguageOfTheUser) {
    const InstalledTexts texts{{"pivotlog.xlf", "(empty)", "(vide)"}, {"pivotlog.xlf", "^1: ^2", "^1 : ^2"}};
    EXPECT_EQ(renderTable(built("", [](BpPivotTable&) {}), {}), "(vide)\n");
    EXPECT_EQ(renderNotes({1, "Fichier", "a"}, {}), "Fichier : a\n");
    EXPECT_EQ(renderNotes({1, "", "a"}, {}), "a\n");
    const tables::Table layered = built("", [](BpPivotTable& draft) {
        dimension(draft, "", 0).Category(plain("r")).Cell(plain("x"));
        dimension(draft, "Ann\u00e9e", 2).Category(plain("2026"));
    });
    EXPECT_EQ(renderTable(layered, {}).substr(0, 14), "Ann\u00e9e : 2026\n");
}

TEST(TextRendering, KeepsDataColumnsWithinTheirPoints) {
    struct Case {
        std::optional<int> least;
        std::optional<int> most;
        std::size_t text;      // columns of the only cell
        std::size_t expected;  // columns of text
    };
    const Case cases[] = {
        {{}, {}, 3, 3},     {{}, {}, 100, 100}, {150, 300, 3, 25}, {150, 300, 40, 40},
        {150, 300, 90, 50}, {120, 120, 90, 20}, {120, 60, 90, 20}, {{}, 200, 90, 33},
        {11, 11, 90, 6},    {11, 11, 2, 2},     {-5, {}, 3, 3},    {0, 0, 3, 3},
    };
    for (const Case& each : cases) {
        const tables::Table table = built("", [&](BpPivotTable& draft) {
            if (each.least) draft.MinDataColumnWidth(*each.least);
            if (each.most) draft.MaxDataColumnWidth(*each.most);
            dimension(draft, "", 0).Category(plain("r")).Cell(plain(std::string(each.text, 'x')));
        });
        const std::size_t labels = 1 + 1 + 3;  // the first line, one letter and what stands around it
        const std::string first = linesOf(renderTable(table, {0, false, false})).at(0);
        EXPECT_EQ(first.size(), labels + each.expected + 3)
            << each.least.value_or(-1) << ' ' << each.most.value_or(-1) << ' ' << each.text;
    }
}

TEST(TextRendering, StaysWithinTheTerminalWhateverItsWidth) {
    const std::pair<const char*, tables::Table> tables[] = {
        {"documents", documents()}, {"comment", comment()}, {"grouped", grouped()},
        {"layered", layered()},     {"wide", wideTexts()},  {"export", exportSummary()},
        {"crowded", crowded()},     {"broad", broad()},
    };
    for (const auto& [name, table] : tables) {
        for (std::size_t width = 34; width < 140; ++width) {
            for (const std::string& line : linesOf(renderTable(table, {width, true, false}))) {
                ASSERT_LE(displayWidth(line), width) << name << ": " << line;
            }
        }
    }
}

TEST(TextRendering, DrawsSomethingInATerminalThatIsTooNarrow) {
    for (std::size_t width = 1; width < 34; ++width) {
        EXPECT_FALSE(renderTable(broad(), {width, true, false}).empty());
        EXPECT_FALSE(renderTable(crowded(), {width, false, true}).empty());
    }
}

TEST(TextRendering, ShowsOfSeveralDimensionsOnlyRowsThatHaveCells) {
    constexpr std::size_t count = 2000;
    const tables::Table table = built("", [](BpPivotTable& draft) {
        BpDimension outer = dimension(draft, "Outer", 0);
        BpDimension inner = dimension(draft, "Inner", 0);
        for (std::size_t i = 0; i < count; ++i) {
            outer.Category(plain(std::to_string(i)));
            inner.Category(plain(std::to_string(i))).Cell(plain("x"));
        }
    });
    const std::vector<std::string> lines = linesOf(renderTable(table, {0, false, false}));
    EXPECT_EQ(std::count_if(lines.begin(), lines.end(),
                            [](const std::string& line) { return line.find('x') != std::string::npos; }),
              static_cast<std::ptrdiff_t>(count));
}

TEST(TextRendering, SharesTheLettersOfEqualNotes) {
    const tables::Table table = built("", [](BpPivotTable& draft) {
        BpDimension rows = dimension(draft, "", 0);
        rows.Category(plain("1")).Cell(plain("x")).Note(plain("one")).Note(plain("two"));
        rows.Category(plain("2")).Cell(plain("y")).Note(plain("two"));
        rows.Category(plain("3")).Cell(plain("z")).Note(plain("three")).Note(plain("one"));
    });
    const std::vector<std::string> lines = linesOf(renderTable(table, {0, false, false}));
    const std::vector<std::string> expected = {"+---+---------+", "| 1 | x [a,b] |", "| 2 | y [b]   |",
                                               "| 3 | z [c,a] |", "+---+---------+", "[a] one",
                                               "[b] two",         "[c] three"};
    EXPECT_EQ(lines, expected);
}

TEST(TextRendering, WrapsNotesBelowTheirValue) {
    const struct {
        NotesAdded notes;
        std::size_t width;
        const char* text;
    } cases[] = {
        {{1, "String tables", "There is no ranks.xlf for de, en."},
         80,
         "String tables: There is no ranks.xlf for de, en.\n"},
        {{1, "String tables", "There is no ranks.xlf for de, en."},
         48,
         "String tables: There is no ranks.xlf for de, en.\n"},
        {{1, "String tables", "There is no ranks.xlf for de, en."},
         36,
         "String tables: There is no ranks.xlf\n"
         "               for de, en.\n"},
        {{1, "String tables", "There is no ranks.xlf for de, en."},
         29,
         "String tables: There is no\n"
         "ranks.xlf for de, en.\n"},
        {{1, "", "There is no ranks.xlf for de, en."}, 24, "There is no ranks.xlf\nfor de, en.\n"},
        {{1, "表", "ranks.xlf はありません。"}, 20, "表: ranks.xlf はあり\n    ません。\n"},
        {{1, "Document File", ""}, 80, "Document File: \n"},
        {{1, "File", "a\nb"}, 80, "File: a\u240ab\n"},
    };
    for (const auto& each : cases) EXPECT_EQ(renderNotes(each.notes, {each.width, true, false}), each.text);
}

TEST(TextRendering, WritesNotesInOneLine) {
    EXPECT_EQ(renderNotes({2, "Viewer", "Output1"}, {}), "Viewer: Output1\n");
    EXPECT_EQ(renderNotes({2, "", "alone"}, {}), "alone\n");
    EXPECT_EQ(renderNotes({2, "Document File", ""}, {}), "Document File: \n");
    const std::string hostile = renderNotes({2, "a\x1b[2J", "b\nc"}, {});
    EXPECT_EQ(std::count(hostile.begin(), hostile.end(), '\n'), 1);
    EXPECT_EQ(hostile.find('\x1b'), std::string::npos);
}

}  // namespace
}  // namespace vexa
