#include "backend/pivot/string_table_notes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "backend/paths/path_factory.h"
#include "backend/pivot/bp_procedure.h"
#include "backend/strings/dictionary.h"
#include "backend/strings/string_table.h"
#include "backend/strings/table_dictionary.h"
#include "tests/unit/frontend/memory_file_system.h"
#include "tests/unit/pivot/collected_log.h"
#include "tests/unit/strings/sample_tables.h"

namespace vexa {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class StringTableNotes : public testing::Test {
  protected:
    StringTableNotes() {
        forgetStringTables();
        installPaths("\\home", "en");
        system_.files["\\home\\lang\\de\\a.xlf"] = tableOf("");
        system_.files["\\home\\lang\\de\\broken.xlf"] = "<xliff";
    }
    ~StringTableNotes() override {
        installPaths("", "");
        forgetStringTables();
    }

    static void ask(const std::string& rest) {
        const std::string path = "\\home\\lang\\" + rest;
        std::vector<keyValueGloss> entries{{"old", "old", ""}};
        const FileResult result = FacSTStringTable().GetKeysAndValues(path, entries);
        EXPECT_TRUE(result || entries.empty()) << path;
    }
    [[nodiscard]] std::vector<std::string> notes() const {
        std::vector<std::string> texts;
        for (const NotesAdded& note : log_.all<NotesAdded>()) {
            EXPECT_EQ(note.level, 1);
            EXPECT_EQ(note.label, "String tables");
            texts.push_back(note.value);
        }
        return texts;
    }

    frontend::MemoryFileSystem system_;
    const CollectedLog log_;
};

TEST_F(StringTableNotes, AFileNameThatIsMissingIsOneNoteWithItsLanguages) {
    for (const char* path : {"de\\a.xlf", "fr\\a.xlf", "it\\b.xlf", "ja\\a.xlf"}) {
        ask(path);
    }
    ask("en\\old/c.xlf");
    ask("old/en\\c.xlf");
    publishStringTableNotes();
    EXPECT_THAT(notes(), ElementsAre("There is no a.xlf for fr, ja.", "There is no b.xlf for it.",
                                     "There is no old/c.xlf for en.", "There is no c.xlf for old/en."));
}

TEST_F(StringTableNotes, ABrokenFileIsANoteWithItsReason) {
    ask("de\\broken.xlf");
    ask("fr\\broken.xlf");
    publishStringTableNotes();
    EXPECT_THAT(notes(), ElementsAre("broken.xlf for de cannot be read: Line 1: unexpected end of input.",
                                     "There is no broken.xlf for fr."));
}

TEST_F(StringTableNotes, AFileThatIsThereWithItsEndingIsNamed) {
    ask("de\\a");
    ask("fr\\a");
    ask("de\\");
    publishStringTableNotes();
    EXPECT_THAT(notes(),
                ElementsAre("There is no a for de, fr. Did you mean a.xlf?", "There is no \"\" for de."));
}

TEST_F(StringTableNotes, ABrokenTableOfADictionaryIsNotedOnceInALife) {
    FacSTDictionary dictionary("\\home\\lang\\de");
    system_.files["\\home\\lang\\de\\outname.xlf"] = "<xliff";
    for (int i = 0; i < 2; ++i) {
        dictionary.SetProcedure("Output Name");
        dictionary.SetProcedure("Output Save");
        publishStringTableNotes();
    }
    EXPECT_THAT(notes(), ElementsAre("outname.xlf for de cannot be read: Line 1: unexpected end of input."));
}

// The table that the note's own words are looked up in is read no sooner than for the note.
TEST_F(StringTableNotes, ATableThatBreaksTheNoteIsNotedBehindIt) {
    system_.files["\\home\\lang\\de\\pivotlog.xlf"] = "<xliff";
    StringDictionary::current().open("\\home\\lang\\de");
    ask("fr\\a.xlf");
    publishStringTableNotes();
    StringDictionary::current().open("");
    EXPECT_THAT(notes(), ElementsAre("There is no a.xlf for fr.",
                                     "pivotlog.xlf for de cannot be read: Line 1: unexpected end of input."));
}

TEST_F(StringTableNotes, ComeOnceAndAtTheEndOfTheProcedure) {
    {
        const BpProcedure procedure("Stb Print", 2);
        ask("fr\\a.xlf");
        ask("fr\\a.xlf");
        ask("file");
        EXPECT_THAT(notes(), IsEmpty());
    }
    EXPECT_THAT(notes(), ElementsAre("There is no a.xlf for fr.", "There is no file for \"\"."));
    EXPECT_TRUE(std::holds_alternative<ProcedureEnded>(log_.events.back()));
    { const BpProcedure procedure("Stb Print", 2); }
    EXPECT_EQ(notes().size(), 2U);
}

}  // namespace
}  // namespace vexa
