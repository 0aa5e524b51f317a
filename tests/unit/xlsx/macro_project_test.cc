#include "frontend/export/xlsx/macro_project.h"

#include <gtest/gtest.h>

#include "frontend/package/compound_file.h"
#include "tests/unit/xlsx/workbook_samples.h"

namespace vexa::frontend {
namespace {

/// What a packed stream holds, by the rules of its form: pieces with a header each, in them groups of eight
/// behind a byte whose bits tell which of them are copies.
std::string unpacked(std::string_view packed) {
    std::string text;
    EXPECT_EQ(packed.front(), '\x01');
    packed.remove_prefix(1);
    while (packed.size() >= 2) {
        const unsigned header =
            static_cast<unsigned char>(packed[0]) | unsigned{static_cast<unsigned char>(packed[1])} << 8U;
        EXPECT_EQ(header >> 12U, 0xBU);
        std::string_view piece = packed.substr(2, (header & 0xFFFU) + 1);
        packed.remove_prefix(2 + piece.size());
        while (!piece.empty()) {
            EXPECT_EQ(piece.front(), '\0');
            text += piece.substr(1, 8);
            piece.remove_prefix(std::min<std::size_t>(piece.size(), 9));
        }
    }
    return text;
}

TEST(MacroProject, HasAModuleForEachObject) {
    std::string bytes;
    ASSERT_TRUE(makeMacroProject({"Sheet1"}, bytes));
    CompoundFile file;
    ASSERT_TRUE(file.read(bytes));
    const auto content = [&file](std::string_view path) {
        const auto place = file.find(path);
        return place ? file.entry(*place).content : "(none)";
    };
    EXPECT_TRUE(unpacked(content("VBA/Sheet1")).starts_with("Attribute VB_Name = \"Sheet1\"\r\n"));
    EXPECT_TRUE(unpacked(content("VBA/ThisWorkbook")).ends_with("Attribute VB_Customizable = True\r\n"));
    EXPECT_EQ(content("VBA/_VBA_PROJECT"), std::string("\xCC\x61\xFF\xFF\0\0\0", 7));
    EXPECT_NE(content("PROJECT").find("\r\nDocument=Sheet1/&H00000000\r\n"), std::string::npos);
    // The list is a chain of records up to the one that ends it.
    const std::string list = unpacked(content("VBA/dir"));
    std::size_t at = 0;
    unsigned kind = 0;
    while (at + 6 <= list.size()) {
        kind = static_cast<unsigned char>(list[at]);
        const unsigned length = static_cast<unsigned char>(list[at + 2]);
        at += 6 + length + (kind == 0x09 ? 2 : 0);
    }
    EXPECT_EQ(at, list.size());
    EXPECT_EQ(kind, 0x10U);
}

TEST(MacroProject, IsInNewWorkbooksOfMacrosAlone) {
    const Inserted plain = insertIntoNew(smallContent());
    const Inserted macros = insertIntoNew(smallContent(), WorkbookKind::xlsm);
    ASSERT_TRUE(plain.done && macros.done);
    EXPECT_FALSE(plain.parts.contains("xl/vbaProject.bin"));
    EXPECT_TRUE(macros.parts.contains("xl/vbaProject.bin"));
    EXPECT_NE(macros.parts.at("[Content_Types].xml").find("sheet.macroEnabled.main+xml"), std::string::npos);
    EXPECT_NE(macros.parts.at("xl/workbook.xml").find("codeName=\"ThisWorkbook\""), std::string::npos);
    EXPECT_NE(macros.sheet().find("<sheetPr codeName=\"Sheet1\"/>"), std::string::npos);
    EXPECT_EQ(plain.sheet().find("codeName"), std::string::npos);
}

}  // namespace
}  // namespace vexa::frontend
