#include "backend/paths/file_specification.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>

#include "backend/platform/file_system.h"
#include "tests/unit/text/installed_character_set.h"

namespace vexa {
namespace {

using std::string;

/// A file system of folders and nothing else, standing in `/home/u`.
class Folders final : public FileSystem {
  public:
    string own = "/home/u";
    std::set<string> folders = {"\\home\\u", "\\home", "\\", "\\data", "\\home\\u\\sub"};

    FileResult read(const string&, string&, std::uint64_t) override { return {false, "none"}; }
    FileResult readStream(const string&, string&, std::uint64_t) override { return {false, "none"}; }
    bool isFile(const string&) override { return false; }
    bool isFolder(const string& path) override { return folders.count(path) != 0; }
    string workingFolder() override { return own; }
    string canonicalPath(const string& path) override { return path; }
    FileResult createTemporary(const string&, string&) override { return {false, "none"}; }
    FileResult append(const string&, std::string_view) override { return {false, "none"}; }
    FileResult flush(const string&) override { return {false, "none"}; }
    FileResult replace(const string&, const string&) override { return {false, "none"}; }
    FileResult remove(const string&) override { return {false, "none"}; }
};

class FileSpecification : public ::testing::Test {
  protected:
    FileSpecification() { FileSystem::install(&files_); }
    ~FileSpecification() override {
        FileSystem::install(nullptr);
        FileLocations::current().reset();
    }

    /// What a function left in its buffer; "untouched" when it says that it did nothing.
    static string expanded(const string& text) {
        Buffer buffer;
        return buffer.answer(ExpandFileSpecification(text.c_str(), buffer.data()));
    }
    static string resolved(const string& text) {
        Buffer buffer;
        return buffer.answer(
            ExpandDirectoryHandle(text.c_str(), buffer.data(), static_cast<int>(text.size())));
    }

    Folders files_;

  private:
    class Buffer {
      public:
        Buffer() { bytes_.fill('?'); }
        char* data() { return bytes_.data(); }
        string answer(int code) {
            EXPECT_EQ(bytes_.back(), '?') << "written beyond the capacity";
            if (code == 0) return bytes_.data();
            const bool untouched = std::count(bytes_.begin(), bytes_.end(), '?') == std::ssize(bytes_);
            return untouched ? "untouched" : "touched";
        }

      private:
        std::array<char, kFileSpecificationCapacity + 1> bytes_{};
    };
};

TEST_F(FileSpecification, RelativeNamesAreTakenFromTheFolder) {
    const struct {
        const char *text, *path;
    } cases[] = {
        {"x.vxv", "\\home\\u\\x.vxv"},
        {"a/b\\x.vxv", "\\home\\u\\a\\b\\x.vxv"},
        {"./x", "\\home\\u\\x"},
        {"../x", "\\home\\x"},
        {"..\\../..\\../x", "\\x"},
        {"a/../b/./x", "\\home\\u\\b\\x"},
        {"a//b", "\\home\\u\\a\\b"},
        {"sub/", "\\home\\u\\sub\\"},
        {".", "\\home\\u"},
        {"..", "\\home"},
        {"...", "\\home\\u\\..."},
        {".hidden", "\\home\\u\\.hidden"},
        {"a b.vxv", "\\home\\u\\a b.vxv"},
        {"ab:c", "\\home\\u\\ab:c"},
    };
    for (const auto& one : cases) EXPECT_EQ(expanded(one.text), one.path) << one.text;
}

TEST_F(FileSpecification, WholePathsStayWhole) {
    const struct {
        const char *text, *path;
    } cases[] = {
        {"/a/x", "\\a\\x"},
        {"\\a\\..\\x", "\\x"},
        {"\\..\\x", "\\x"},
        {"\\", "\\"},
        {"C:\\a\\x", "C:\\a\\x"},
        {"c:/a/../x", "c:\\x"},
        {"C:\\..\\x", "C:\\x"},
        {"C:x", "C:x"},
        {"C:", "C:"},
        {"\\\\server\\share\\..\\x", "\\\\server\\share\\x"},
    };
    for (const auto& one : cases) EXPECT_EQ(expanded(one.text), one.path) << one.text;
}

TEST_F(FileSpecification, WhatIsEmptyOrTooLongIsNotExpanded) {
    const string prefix = "\\home\\u\\";
    const auto room = static_cast<std::size_t>(kFileSpecificationCapacity) - 1;
    EXPECT_EQ(expanded(""), "untouched");
    EXPECT_EQ(expanded(string(room - prefix.size(), 'x')), prefix + string(room - prefix.size(), 'x'));
    EXPECT_EQ(expanded(string(room - prefix.size() + 1, 'x')), "untouched");
    std::array<char, 2> buffer = {'?', '?'};
    EXPECT_NE(ExpandFileSpecification(nullptr, buffer.data()), 0);
    EXPECT_EQ(buffer[0], '?');
}

TEST_F(FileSpecification, HandlesAreResolved) {
    FileLocations& locations = FileLocations::current();
    locations.setHandle("data", "/project/data");
    locations.setHandle("Deep", "data");
    locations.setHandle("ended", "\\project\\");
    locations.setHandle("\u00e4", "/umlaut");
    const struct {
        const char *text, *path;
    } cases[] = {
        {"data", "\\project\\data"},
        {"DATA", "\\project\\data"},
        {"data\\x.vxv", "\\project\\data\\x.vxv"},
        {"Data/a/x.vxv", "\\project\\data\\a\\x.vxv"},
        {"data\\", "\\project\\data\\"},
        {"deep/x", "data\\x"},
        {"ended/x", "\\project\\x"},
        {"\u00c4/x", "\\umlaut\\x"},
        {"dat", "untouched"},
        {"database", "untouched"},
        {"data.vxv", "untouched"},
        {"/data", "untouched"},
        {"x/data", "untouched"},
        {"", "untouched"},
    };
    for (const auto& one : cases) EXPECT_EQ(resolved(one.text), one.path) << one.text;
}

TEST_F(FileSpecification, AHandleWithoutRoomForItsTargetLeavesTheBuffer) {
    FileLocations::current().setHandle("big", string(kFileSpecificationCapacity, 'x'));
    FileLocations::current().setHandle("fits", string(kFileSpecificationCapacity - 3, 'x'));
    EXPECT_EQ(resolved("big"), "untouched");
    EXPECT_EQ(resolved("fits/a"), string(kFileSpecificationCapacity - 3, 'x') + "\\a");
    EXPECT_EQ(resolved("fits/ab"), "untouched");
}

TEST_F(FileSpecification, OnlyTheGivenLengthIsRead) {
    FileLocations::current().setHandle("data", "/d");
    std::array<char, kFileSpecificationCapacity> buffer{};
    EXPECT_EQ(ExpandDirectoryHandle("data.vxv", buffer.data(), 4), 0);
    EXPECT_STREQ(buffer.data(), "\\d");
}

TEST_F(FileSpecification, ALaterHandleReplacesAnEarlierOne) {
    FileLocations& locations = FileLocations::current();
    locations.setHandle("data", "/first");
    locations.setHandle("DATA", "/second");
    EXPECT_EQ(locations.handle("Data"), "/second");
    EXPECT_EQ(locations.handle("other"), "");
    locations.reset();
    EXPECT_EQ(locations.handle("data"), "");
}

TEST_F(FileSpecification, ATrailByteIsNoSeparator) {
    const InstalledCharacterSet installed("Shift_JIS");
    EXPECT_EQ(expanded("\x83\x5C/x"), "\\home\\u\\\x83\x5C\\x");
    EXPECT_EQ(expanded("a/\x83\x5C"), "\\home\\u\\a\\\x83\x5C");
    FileLocations::current().setHandle("\x83\x5C", "/so\x83\x5C");
    EXPECT_EQ(resolved("\x83\x5C\\x"), "\\so\x83\x5C\\x");
    EXPECT_EQ(resolved("\x83/x"), "untouched");
}

TEST_F(FileSpecification, WithoutAWorkingFolderOnlyWholeNamesExpand) {
    files_.own = "";
    EXPECT_EQ(expanded("x.vxv"), "untouched");
    EXPECT_EQ(expanded("/data/x.vxv"), "\\data\\x.vxv");
}

TEST_F(FileSpecification, TheFolderChanges) {
    FileLocations& locations = FileLocations::current();
    EXPECT_EQ(locations.folder(), "\\home\\u");
    EXPECT_TRUE(locations.changeFolder("sub"));
    EXPECT_EQ(locations.folder(), "\\home\\u\\sub");
    EXPECT_EQ(expanded("../x"), "\\home\\u\\x");
    EXPECT_FALSE(locations.changeFolder("none"));
    EXPECT_FALSE(locations.changeFolder(""));
    EXPECT_EQ(locations.folder(), "\\home\\u\\sub");
    EXPECT_TRUE(locations.changeFolder("/data"));
    EXPECT_EQ(locations.folder(), "\\data");
    EXPECT_TRUE(locations.changeFolder(".."));
    EXPECT_EQ(expanded("x"), "\\x");
    locations.reset();
    EXPECT_EQ(locations.folder(), "\\home\\u");
}

}  // namespace
}  // namespace vexa
