#include "apps/vexa/installation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "backend/paths/path_factory.h"
#include "backend/platform/file_system.h"
#include "backend/strings/string_table.h"
#include "backend/strings/table_dictionary.h"
#include "tests/unit/text/installed_character_set.h"

namespace vexa::program {
namespace {

namespace fs = std::filesystem;
using std::string;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class Installation : public testing::Test {
  protected:
    Installation() {
        string name = (fs::temp_directory_path() / "vexa-test-XXXXXX").string();
        folder_ = fs::canonical(mkdtemp(name.data()));
        choices_.installationFolder = folder_.string();
    }
    ~Installation() override {
        installPaths("", "");
        forgetStringTables();
        fs::remove_all(folder_);
    }

    void addLanguage(const string& code) const { fs::create_directories(folder_ / "lang" / code); }
    [[nodiscard]] bool open(const string& language) {
        choices_.language = language;
        warnings_.clear();
        problem_.clear();
        return openInstallation(choices_, warnings_, problem_);
    }
    [[nodiscard]] string inInstallation(const string& rest) const {
        return toBackslashPath(folder_.string()) + rest;
    }
    static string path(int instance) { return PathFactory::getPathInstance(instance)->getPath(); }
    static string monthName() {
        FacSTDictionary dictionary(path(PathFactory::kLanguage));
        dictionary.SetProcedure("Output Modify");
        return dictionary.LookUp("TFOMarch");
    }

    fs::path folder_;
    SessionChoices choices_;
    std::vector<string> warnings_;
    string problem_;
};

TEST_F(Installation, TakesTheLanguageThatItHas) {
    addLanguage("de");
    addLanguage("en");
    ASSERT_TRUE(open("de"));
    EXPECT_EQ(path(PathFactory::kInstallation), inInstallation("\\"));
    EXPECT_EQ(path(PathFactory::kLanguage), inInstallation("\\lang\\de\\"));
    EXPECT_THAT(warnings_, IsEmpty());
    ASSERT_TRUE(open("en"));
    EXPECT_EQ(path(PathFactory::kLanguage), inInstallation("\\lang\\en\\"));
    EXPECT_THAT(warnings_, IsEmpty());
}

TEST_F(Installation, ALanguageThatItLacksGivesWayToEnglish) {
    addLanguage("en");
    ASSERT_TRUE(open("fr"));
    EXPECT_EQ(path(PathFactory::kLanguage), inInstallation("\\lang\\en\\"));
    EXPECT_THAT(warnings_, ElementsAre(HasSubstr("no texts in the language fr")));
}

TEST_F(Installation, SaysThatThereIsNoEnglish) {
    ASSERT_TRUE(open("fr"));
    EXPECT_THAT(warnings_, ElementsAre(HasSubstr("language fr"), HasSubstr("no English texts")));
    ASSERT_TRUE(open("en"));
    EXPECT_THAT(warnings_, ElementsAre(HasSubstr("no English texts")));
}

TEST_F(Installation, RefusesWhatIsNoFolderAndNoLanguageCode) {
    addLanguage("en");
    ASSERT_TRUE(open("en"));
    const string before = path(PathFactory::kLanguage);
    for (const char* code : {"", "e", "engl", "en_", "en_U", "en_/..", "../en", "en/", "12", "d\u00e9"}) {
        EXPECT_FALSE(open(code)) << code;
        EXPECT_THAT(problem_, HasSubstr(code));
    }
    std::ofstream(folder_ / "file").close();
    for (const char* name : {"nowhere", "file"}) {
        choices_.installationFolder = (folder_ / name).string();
        EXPECT_FALSE(open("en")) << name;
        EXPECT_THAT(problem_, HasSubstr(name));
    }
    EXPECT_EQ(path(PathFactory::kLanguage), before);
}

TEST_F(Installation, ThatOfTheProgramHasTheMonths) {
    // The tests stand beside the program.
    choices_.installationFolder.clear();
    const struct {
        const char *language, *charset, *march;
    } cases[] = {
        {"en", "UTF-8", "March"},    {"de", "UTF-8", "M\u00e4rz"}, {"de", "windows-1252", "M\xE4rz"},
        {"de", "Shift_JIS", "M?rz"}, {"xx", "UTF-8", "March"},
    };
    for (const auto& one : cases) {
        const InstalledCharacterSet installed(one.charset);
        ASSERT_TRUE(open(one.language));
        EXPECT_EQ(monthName(), one.march) << one.language << ' ' << one.charset;
    }
}

}  // namespace
}  // namespace vexa::program
