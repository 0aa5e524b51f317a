#include "backend/pivot/fetch_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "backend/paths/file_specification.h"
#include "tests/unit/pivot/collected_log.h"
#include "tests/unit/text/installed_character_set.h"

namespace vexa {
namespace {

namespace fs = std::filesystem;
using std::string;
using namespace std::string_literals;
using testing::HasSubstr;
using testing::IsEmpty;

/// The back end's folder is a new one with a folder `sub`.
class FetchFileTest : public testing::Test {
  protected:
    FetchFileTest() {
        string name = (fs::temp_directory_path() / "vexa-test-XXXXXX").string();
        folder_ = mkdtemp(name.data());
        fs::create_directory(folder_ / "sub");
        EXPECT_TRUE(FileLocations::current().changeFolder(folder_.string()));
    }
    ~FetchFileTest() override {
        FileLocations::current().reset();
        fs::remove_all(folder_);
    }

    void write(const string& name, const string& content) const { std::ofstream(folder_ / name) << content; }
    [[nodiscard]] string whole(const string& name) const { return (folder_ / name).string(); }

    fs::path folder_;
    CollectedLog log_;
};

TEST_F(FetchFileTest, GivesTheBytesOfTheFileUnchanged) {
    const InstalledCharacterSet installed("windows-1252");
    const string bytes = "\xEF\xBB\xBF<a>\r\n\0\x1A\xFF\xE4</a>"s;
    write("a.xml", bytes);
    EXPECT_EQ(FetchFile::fetch(whole("a.xml"), true, false), bytes);
    EXPECT_EQ(FetchFile::fetch(whole("a.xml"), false, false), bytes);
    EXPECT_THAT(log_.events, IsEmpty());
}

TEST_F(FetchFileTest, ResolvesHandlesAndTheFolderOnlyWhenAsked) {
    write("top.cgt", "top");
    write("sub/deep.cgt", "deep");
    FileLocations::current().setHandle("looks", whole("sub"));
    FileLocations::current().setHandle("near", "sub");
    FileLocations::current().setHandle("one", whole("top.cgt"));
    const struct {
        const char *name, *content;
    } cases[] = {
        {"top.cgt", "top"},
        {"sub/deep.cgt", "deep"},
        {"sub\\deep.cgt", "deep"},
        {"sub\\..\\top.cgt", "top"},
        {"looks\\deep.cgt", "deep"},
        {"LOOKS/deep.cgt", "deep"},
        {"near/deep.cgt", "deep"},
        {"one", "top"},
        {"deep.cgt", ""},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(FetchFile::fetch(one.name, true, true), one.content) << one.name;
        EXPECT_EQ(FetchFile::fetch(one.name, false, true), "") << one.name;
    }
}

TEST_F(FetchFileTest, FindsNamesOfTheBackEndsCharacterSet) {
    write("M\u00e4rz.tlk", "umlaut");
    write("\u8868.tlk", "table");
    {
        const InstalledCharacterSet installed("windows-1252");
        EXPECT_EQ(FetchFile::fetch("M\xE4rz.tlk", true, true), "umlaut");
    }
    const InstalledCharacterSet installed("Shift_JIS");
    // The second byte of the character is the code of a backslash.
    EXPECT_EQ(FetchFile::fetch("\x95\x5C.tlk", true, true), "table");
}

TEST_F(FetchFileTest, WhatCannotBeReadIsEmptyAndNamedInAWarning) {
    ASSERT_EQ(mkfifo(whole("pipe").c_str(), 0600), 0);
    std::ofstream(whole("giant")).close();
    fs::resize_file(whole("giant"), FetchFile::kLimit + 1);
    for (const char* name : {"none.tlk", "sub", "pipe", "giant"}) {
        EXPECT_EQ(FetchFile::fetch(name, true, true), "") << name;
        EXPECT_THAT(log_.events, IsEmpty()) << name;
        EXPECT_EQ(FetchFile::fetch(name, true, false), "") << name;
        const auto errors = log_.all<ErrorReported>();
        ASSERT_EQ(errors.size(), 1U) << name;
        EXPECT_EQ(errors[0].level, 2);
        EXPECT_EQ(errors[0].text, "The file ^1 could not be read: ^2.");
        EXPECT_THAT(errors[0].message, HasSubstr("\\"s + name)) << name;
        log_.events.clear();
    }
    EXPECT_EQ(FetchFile::fetch("/dev/zero", true, true), "");
}

TEST_F(FetchFileTest, AFileOfTheLimitIsRead) {
    std::ofstream(whole("full")).close();
    fs::resize_file(whole("full"), FetchFile::kLimit);
    EXPECT_EQ(FetchFile::fetch("full", true, true).size(), FetchFile::kLimit);
}

TEST_F(FetchFileTest, AnEmptyFileIsNoMistake) {
    write("empty", "");
    EXPECT_EQ(FetchFile::fetch("empty", true, false), "");
    EXPECT_THAT(log_.events, IsEmpty());
}

TEST_F(FetchFileTest, NamesThatNoFileHasFindNothing) {
    write("a", "content");
    for (const string& name : {""s, "a\0b"s, "\0"s, "a/"s, string(100'000, 'a'), string(5000, '/')}) {
        EXPECT_EQ(FetchFile::fetch(name, true, false), "") << name.size();
        EXPECT_EQ(FetchFile::fetch(name, false, false), "") << name.size();
    }
    EXPECT_EQ(log_.all<ErrorReported>().size(), 12U);
}

}  // namespace
}  // namespace vexa
