// Files of every form, and what the options say of them.

#include "frontend/import/import_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/frontend/memory_file_system.h"
#include "tests/unit/import/import_samples.h"

namespace vexa::frontend {
namespace {

using testing::ElementsAre;

class ImportFile : public testing::Test {
  protected:
    bool import(const std::string& file) {
        return importFile(file, options, surroundings.context, imported, problem);
    }

    ImportSurroundings surroundings;
    MemoryFileSystem files;
    ImportOptions options;
    Imported imported;
    ImportProblem problem;
};

TEST_F(ImportFile, GoesByTheExtension) {
    files.files["a.CSV"] = "R,a\nr,1\n";
    files.files["b.tsv"] = "R\ta\nr\t1\n";
    files.files["c.svg"] = kSampleSvg;
    files.files["d.png"] = samplePng(4, 4);
    files.files["e.md"] = "# H\n";
    files.files["f.txt"] = "one\r\ntwo\r\n\r\n";
    files.files["g.json"] = R"({"items":[{"type":"log"}]})";
    for (const auto& [name, bytes] : std::map<std::string, std::string>(files.files)) {
        EXPECT_TRUE(import(name)) << problem.shown();
    }
    std::vector<ItemType> types;
    for (const ItemId id : imported.outline.roots()) types.push_back(imported.outline.find(id)->item.type());
    EXPECT_THAT(types, ElementsAre(ItemType::table, ItemType::table, ItemType::chart, ItemType::chart,
                                   ItemType::heading, ItemType::text, ItemType::log));
    EXPECT_EQ(std::get<TextContent>(itemAt(imported.outline, 5).content).text, "one\ntwo");
}

TEST_F(ImportFile, SaysWhatIsWrongWithTheFile) {
    EXPECT_FALSE(import("a.csv"));
    EXPECT_TRUE(problem.isFile);
    EXPECT_EQ(problem.shown(), "a.csv: The file cannot be read: cannot be read.");
    files.files["a.xyz"] = "";
    EXPECT_FALSE(import("a.xyz"));
    EXPECT_THAT(problem.shown(), testing::HasSubstr("a.xyz: The form of this file is not known."));
    files.files["a.csv"] = "R,\xFF\n";
    EXPECT_FALSE(import("a.csv"));
    EXPECT_THAT(
        problem.shown(),
        testing::StartsWith("a.csv:1:3: The byte FF (at offset 2 of the file) is no character in UTF-8."));
    files.files["a.csv"] = "R,a\nr\n";
    EXPECT_FALSE(import("a.csv"));
    EXPECT_THAT(problem.shown(), testing::StartsWith("a.csv:2:1: Fields found: 1."));
    options.encoding = "nonsense";
    EXPECT_FALSE(import("a.csv"));
    EXPECT_THAT(problem.shown(), testing::HasSubstr("The encoding nonsense is not known."));
}

TEST_F(ImportFile, TakesEncodingsAndByteOrderMarks) {
    files.files["a.csv"] =
        "\xEF\xBB\xBF"
        "R,a\nr,1\n";
    files.files["b.csv"] = std::string(
        "\xFF\xFE"
        "R\0,\0\xE4\0\n\0r\0,\0"
        "1\0",
        16);
    files.files["c.csv"] = "R,\xE4\nr,1\n";
    EXPECT_TRUE(import("a.csv")) << problem.shown();
    EXPECT_TRUE(import("b.csv")) << problem.shown();
    options.encoding = "windows-1252";
    EXPECT_TRUE(import("c.csv")) << problem.shown();
    EXPECT_EQ(tableAt(imported.outline, 0).data->dimensions()[0].label, "R");
    for (const std::size_t index : {1U, 2U}) {
        EXPECT_THAT(labelsOf(tableAt(imported.outline, index).data->dimensions()[1]),
                    ElementsAre("\xC3\xA4"));
    }
}

TEST_F(ImportFile, SetsWhatTheFileDoesNotSay) {
    files.files["a.json"] = R"({"items":[{"type":"header","label":"Own","items":[{"type":"table"},
        {"type":"table","title":"T","subtype":"S"},{"type":"grid","rows":[["a"]]},{"type":"chart","svg":"<svg/>"}]},
        {"type":"text","command":"C"}]})";
    options.command = "Means";
    options.label = "Label";
    options.title = "Title";
    options.subtype = "Subtype";
    options.alternativeText = "Alternative";
    ASSERT_TRUE(import("a.json")) << problem.shown();
    const OutlineNode& header = *imported.outline.find(imported.outline.roots()[0]);
    EXPECT_EQ(header.item.label, "Own");
    EXPECT_EQ(header.item.command, "Means");
    EXPECT_EQ(itemAt(imported.outline, 1).command, "C");
    EXPECT_EQ(itemAt(imported.outline, 1).label, "Label");
    EXPECT_EQ(itemAt(imported.outline, 1).subtype, "Subtype");
    EXPECT_EQ(header.item.subtype, "");
    const auto child = [&](std::size_t index) -> const Item& {
        return imported.outline.find(header.children[index])->item;
    };
    EXPECT_EQ(child(0).command, "");
    EXPECT_EQ(child(0).label, "");
    EXPECT_EQ(child(0).subtype, "Subtype");
    EXPECT_EQ(std::get<TableContent>(child(0).content).table.view->title, "Title");
    EXPECT_EQ(child(1).subtype, "S");
    EXPECT_EQ(std::get<TableContent>(child(1).content).table.view->title, "T");
    EXPECT_EQ(std::get<GridContent>(child(2).content).grid->title, "Title");
    EXPECT_EQ(std::get<ChartContent>(child(3).content).alternativeText, "Alternative");
    EXPECT_EQ(child(3).subtype, "Subtype");
}

TEST_F(ImportFile, FindsPicturesBesideTheFile) {
    files.files["folder/a.json"] = R"({"items":[{"type":"chart","file":"b.svg"}]})";
    files.files["folder/b.svg"] = kSampleSvg;
    EXPECT_TRUE(import("folder/a.json")) << problem.shown();
}

}  // namespace
}  // namespace vexa::frontend
