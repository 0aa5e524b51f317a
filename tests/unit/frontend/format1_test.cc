// Files of format 1: what earlier versions have saved opens, and what was damaged then is damaged now.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "frontend/package/zip_writer.h"
#include "tests/unit/frontend/sample_documents.h"

namespace vexa::frontend {
namespace {

std::string fileOf(const std::string& kind, const std::string& xml) {
    std::string bytes;
    ZipWriter archive(gatherInto(bytes));
    EXPECT_TRUE(archive.add("manifest.xml",
                            R"(<vexaDocument format="1" type="VXV"><item kind=")" + kind +
                                R"(" entry="items/000001.xml" label="Item" hidden="true"/></vexaDocument>)"));
    EXPECT_TRUE(archive.add("items/000001.xml", xml));
    EXPECT_TRUE(archive.finish());
    return bytes;
}

ItemContent contentOf(const std::string& kind, const std::string& xml) {
    const auto document = opened(fileOf(kind, xml));
    if (document == nullptr) return {};
    const Item& item = itemAt(*document, 1);
    EXPECT_EQ(item.label, "Item");
    EXPECT_FALSE(item.visible);
    return item.content;
}

TEST(Format1, MessagesBecomeLogsAndWarnings) {
    EXPECT_EQ(contentOf("message", R"(<message level="1">a</message>)"), ItemContent(LogContent{"a"}));
    EXPECT_EQ(contentOf("message", R"(<message level="2">b</message>)"), ItemContent(WarningContent{2, "b"}));
    EXPECT_EQ(contentOf("message", R"(<message level="3">c</message>)"), ItemContent(WarningContent{3, "c"}));
}

TEST(Format1, TextsAndNotesStay) {
    EXPECT_EQ(contentOf("text", "<text> a\\5C </text>"), ItemContent(plainText(" a\\ ")));
    EXPECT_EQ(contentOf("notes", R"(<notes><line level="2" label="L">v</line></notes>)"),
              ItemContent(NotesContent{{{2, "L", "v"}}}));
}

TEST(Format1, TablesBecomeWhatTheyWouldBeToday) {
    const ItemContent content = contentOf(
        "table",
        R"(<table title="T" caption="C" subtype="S" titleHidden="true" minDataColumnWidth="70" flag="true">)"
        R"(<dimension label="R" kind="2" position="0 2 1 1"><group label="G"/><category label="a" group="0"/>)"
        R"(<category label="b"/></dimension><dimension kind="1" position="1 1 0 0"><category label="c"/></dimension>)"
        R"(<extras bold="true" color="#ff0000"><note>why</note></extras><c n="5" x="1">5</c><c>text</c></table>)");
    const tables::Table& table = std::get<TableContent>(content).table;
    EXPECT_EQ(table.view->title, "T");
    EXPECT_TRUE(table.view->titleHidden);
    EXPECT_EQ(table.view->minColumnWidth, 70);
    EXPECT_EQ(table.view->rows, (std::vector<tables::DimensionId>{0}));
    EXPECT_EQ(table.view->columns, (std::vector<tables::DimensionId>{1}));
    ASSERT_NE(table.data->find(0), nullptr);
    EXPECT_EQ(table.data->find(0)->number, 5);
    EXPECT_EQ(table.data->text(*table.data->find(1)), "text");
    EXPECT_EQ(table.data->footnotes(), (std::vector<std::string>{"why"}));
    EXPECT_EQ(table.style->style(table.style->cell(0)).bold, true);
    EXPECT_EQ(table.style->style(table.style->cell(0)).color, tables::Color{0xff0000});
}

TEST(Format1, FlatTablesBecomeGrids) {
    const ItemContent content =
        contentOf("flatTable",
                  R"(<flatTable title="T" columns="2" headerRows="1" headerColumns="0"><extras bold="true"/>)"
                  R"(<c>a</c><c>b</c><c x="1">1</c><c>2</c></flatTable>)");
    const tables::FlatTable& grid = *std::get<GridContent>(content).grid;
    EXPECT_EQ(grid.title, "T");
    EXPECT_EQ(grid.rows(), 2U);
    EXPECT_EQ(grid.cells[2].text, "1");
    EXPECT_EQ(grid.styles[grid.cells[2].style].bold, true);
}

std::string fileContent(const std::string& name) {
    std::ifstream file(std::string(VEXA_CORPUS) + "/document_file/" + name, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

TEST(Format1, FilesOfEarlierVersionsOpenAndSaveAsTheyAre) {
    for (const char* name :
         {"format1-empty.vxv", "format1-every-kind.vxv", "format1-grids.vxv", "format1-reader.vxw"}) {
        const auto document = opened(fileContent(name));
        ASSERT_NE(document, nullptr) << name;
        SaveOptions options;
        options.locked = document->lock().document;
        const auto again = opened(saved(*document, options));
        ASSERT_NE(again, nullptr) << name;
        EXPECT_TRUE(again->outline() == document->outline()) << name;
        EXPECT_EQ(again->lock(), document->lock()) << name;
        EXPECT_EQ(again->name(), document->name()) << name;
    }
}

TEST(Format1, WithItemsThatContradictThemselves) {
    const std::string dimension =
        R"(<dimension kind="0" position="0 0 0 0"><category label="a"/><category label="b"/></dimension>)";
    const std::vector<std::pair<std::string, std::string>> items = {
        {"text", "<message/>"},
        {"text", "<text><b/></text>"},
        {"text", "<text>\\</text>"},
        {"text", "<text><!-- comment --></text>"},
        {"message", R"(<message level="x"/>)"},
        {"notes", "<notes><other/></notes>"},
        {"table", "<table>" + dimension + R"(<c p="2">x</c></table>)"},
        {"table", "<table>" + dimension + R"(<c p="-1">x</c></table>)"},
        {"table", "<table>" + dimension + R"(<c p="1">x</c><c p="1">x</c></table>)"},
        {"table", "<table>" + dimension + R"(<c x="1">x</c></table>)"},
        {"table", "<table>" + dimension + R"(<c n="1e">x</c></table>)"},
        {"table", "<table>" + dimension + "<c/>" + dimension + "</table>"},
        {"table", R"(<table><dimension kind="0" position="0 0 0"/></table>)"},
        {"table", R"(<table><dimension kind="0" position="0 0 0 0"><group parent="0"/></dimension></table>)"},
        {"table",
         R"(<table><dimension kind="0" position="0 0 0 0"><category group="0"/></dimension></table>)"},
        {"table", R"(<table minDataColumnWidth="99999999999"/>)"},
        {"flatTable", R"(<flatTable columns="2" headerRows="0" headerColumns="0"><c/></flatTable>)"},
        {"flatTable", R"(<flatTable columns="1" headerRows="2" headerColumns="0"><c/></flatTable>)"},
        {"flatTable", R"(<flatTable columns="1" headerRows="0" headerColumns="2"><c/></flatTable>)"},
        {"flatTable", R"(<flatTable columns="0" headerRows="0" headerColumns="0"><c/></flatTable>)"},
    };
    for (const auto& [kind, xml] : items) {
        const StoreResult result = problemOf(fileOf(kind, xml));
        EXPECT_EQ(result.problem, StoreProblem::damaged) << xml;
        EXPECT_TRUE(result.detail.starts_with("the entry items/000001.xml")) << xml;
    }
}

}  // namespace
}  // namespace vexa::frontend
