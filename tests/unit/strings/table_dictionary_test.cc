#include "backend/strings/table_dictionary.h"

#include <gtest/gtest.h>

#include "backend/strings/string_table.h"
#include "tests/unit/frontend/memory_file_system.h"
#include "tests/unit/strings/sample_tables.h"
#include "tests/unit/text/installed_character_set.h"

namespace vexa {
namespace {

using std::string;

class TableDictionary : public testing::Test {
  protected:
    TableDictionary() {
        system_.files["\\lang\\de\\outmodify.xlf"] = tableOf(
            "<trans-unit id='March'><source>another</source></trans-unit>"
            "<trans-unit id='June'><source>June</source></trans-unit>"
            "<trans-unit id='March'><source>March</source><target>M\u00e4rz</target></trans-unit>"
            "<trans-unit id='empty'><source/></trans-unit>");
        system_.files["\\lang\\de\\outnew.xlf"] = "<xliff><broken";
        system_.files["\\lang\\\u8868\\outmodify.xlf"] =
            tableOf("<trans-unit id='March'><source>\u8868</source></trans-unit>");
    }
    ~TableDictionary() override { forgetStringTables(); }

    static string lookUp(const char* location, const char* procedure, const char* key) {
        FacSTDictionary dictionary(location);
        dictionary.SetProcedure(procedure);
        return dictionary.LookUp(key);
    }

    frontend::MemoryFileSystem system_;
};

TEST_F(TableDictionary, FindsTheTextOrGivesTheKey) {
    const struct {
        const char *location, *procedure, *key, *text;
    } cases[] = {
        {"\\lang\\de\\", "Output Modify", "March", "M\u00e4rz"},
        {"\\lang\\de", "Output Modify", "March", "M\u00e4rz"},
        {"\\lang\\de\\", "Output Modify", "June", "June"},
        {"\\lang\\de\\", "Output Modify", "empty", "empty"},
        {"\\lang\\de\\", "Output Modify", "march", "march"},
        {"\\lang\\de\\", "Output Modify", "", ""},
        {"\\lang\\de\\", "Output New", "March", "March"},
        {"\\lang\\de\\", "Output Open", "March", "March"},
        {"\\lang\\de\\", "Unknown", "March", "March"},
        {"\\lang\\fr\\", "Output Modify", "March", "March"},
        {"", "Output Modify", "March", "March"},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(lookUp(one.location, one.procedure, one.key), one.text)
            << one.location << ' ' << one.procedure << ' ' << one.key;
    }
}

TEST_F(TableDictionary, HasNoTextsUntilAProcedureIsSelected) {
    FacSTDictionary dictionary("\\lang\\de\\");
    EXPECT_EQ(dictionary.LookUp("March"), "March");
    dictionary.SetProcedure("Output Modify");
    EXPECT_EQ(dictionary.LookUp("March"), "M\u00e4rz");
    dictionary.SetProcedure("Unknown");
    EXPECT_EQ(dictionary.LookUp("March"), "March");
}

TEST_F(TableDictionary, TextsAndLocationsAreInTheCharacterSet) {
    {
        const InstalledCharacterSet installed("windows-1252");
        EXPECT_EQ(lookUp("\\lang\\de\\", "Output Modify", "March"), "M\xE4rz");
    }
    {
        // The second byte of the character is the code of a backslash.
        const InstalledCharacterSet installed("Shift_JIS");
        EXPECT_EQ(lookUp("\\lang\\\x95\x5C", "Output Modify", "March"), "\x95\x5C");
        EXPECT_EQ(lookUp("\\lang\\de\\", "Output Modify", "March"), "M?rz");
    }
    EXPECT_EQ(lookUp("\\lang\\de\\", "Output Modify", "March"), "M\u00e4rz");
}

TEST_F(TableDictionary, KeepsItsTableWhenTheTablesAreForgotten) {
    FacSTDictionary dictionary("\\lang\\de\\");
    dictionary.SetProcedure("Output Modify");
    system_.files.clear();
    forgetStringTables();
    EXPECT_EQ(dictionary.LookUp("March"), "M\u00e4rz");
    dictionary.SetProcedure("Output Modify");
    EXPECT_EQ(dictionary.LookUp("March"), "March");
}

}  // namespace
}  // namespace vexa
