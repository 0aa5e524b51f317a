#include "backend/strings/string_table.h"

#include <gtest/gtest.h>

#include "tests/unit/frontend/memory_file_system.h"
#include "tests/unit/strings/sample_tables.h"
#include "tests/unit/text/installed_character_set.h"

namespace vexa {
namespace {

using std::string;
using Entries = std::vector<keyValueGloss>;

class StringTable : public testing::Test {
  protected:
    ~StringTable() override { forgetStringTables(); }

    frontend::MemoryFileSystem system_;
};

TEST_F(StringTable, FillsTheSequenceInTheOrderOfTheFile) {
    system_.files["\\t.xlf"] =
        tableOf("<trans-unit id='b'><source>B</source><note>help</note></trans-unit><trans-unit id='a'/>");
    Entries entries = {{"old", "old", "old"}};
    EXPECT_TRUE(FacSTStringTable().GetKeysAndValues("\\t.xlf", entries));
    EXPECT_EQ(entries, (Entries{{"b", "B", "help"}, {"a", "", ""}}));
}

TEST_F(StringTable, AMissingOrBrokenFileHasNoEntries) {
    system_.files["broken"] = "<xliff><trans-unit id='a'/>";
    system_.files["giant"] = "<xliff><trans-unit id='a'/></xliff>" + string(FacSTStringTable::kLimit, ' ');
    for (const char* path : {"missing", "broken", "giant", ""}) {
        Entries entries = {{"old", "old", "old"}};
        const FileResult result = FacSTStringTable().GetKeysAndValues(path, entries);
        EXPECT_FALSE(result) << path;
        EXPECT_NE(result.reason, "") << path;
        EXPECT_EQ(entries, Entries()) << path;
    }
}

TEST_F(StringTable, IsReadOnceUntilTheTablesAreForgotten) {
    Entries entries;
    EXPECT_FALSE(FacSTStringTable().GetKeysAndValues("t", entries));
    system_.files["t"] = tableOf("<trans-unit id='a'/>");
    EXPECT_FALSE(FacSTStringTable().GetKeysAndValues("t", entries));
    forgetStringTables();
    EXPECT_TRUE(FacSTStringTable().GetKeysAndValues("t", entries));
    system_.files.clear();
    EXPECT_TRUE(FacSTStringTable().GetKeysAndValues("t", entries));
    EXPECT_EQ(entries.size(), 1U);
}

TEST_F(StringTable, TextsAndPathsAreInTheCharacterSet) {
    system_.files["\\M\u00e4rz"] =
        tableOf("<trans-unit id='\u00e4'><source>M\u00e4rz \u8868</source><note>\u00fc</note></trans-unit>");
    Entries entries;
    {
        const InstalledCharacterSet installed("windows-1252");
        EXPECT_TRUE(FacSTStringTable().GetKeysAndValues("\\M\xE4rz", entries));
        EXPECT_EQ(entries, (Entries{{"\xE4", "M\xE4rz ?", "\xFC"}}));
    }
    EXPECT_TRUE(FacSTStringTable().GetKeysAndValues("\\M\u00e4rz", entries));
    EXPECT_EQ(entries, (Entries{{"\u00e4", "M\u00e4rz \u8868", "\u00fc"}}));
}

TEST(StringTableFile, EveryCommandHasItsOwn) {
    const struct {
        const char *procedure, *file;
    } cases[] = {
        {"Output New", "outnew.xlf"},
        {"Output Open", "outopen.xlf"},
        {"Output Save", "outsave.xlf"},
        {"Output Close", "outclose.xlf"},
        {"Output Activate", "outactiv8.xlf"},
        {"Output Display", "outdisp.xlf"},
        {"Output Name", "outname.xlf"},
        {"Output Comment", "outcomnt.xlf"},
        {"Output Modify", "outmodify.xlf"},
        {"Output Export", "outexport.xlf"},
        {"Stb Print", "stbprint.xlf"},
        {"OUTPUT MODIFY", ""},
        {"Other", ""},
        {"", ""},
    };
    for (const auto& one : cases) EXPECT_EQ(stringTableFile(one.procedure), one.file) << one.procedure;
}

}  // namespace
}  // namespace vexa
