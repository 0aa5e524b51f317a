#include <gtest/gtest.h>
#include <windows.h>

#include "backend/platform/file_system.h"
#include "backend/platform/output_file.h"

namespace vexa {
namespace {

using std::string;

constexpr std::uint64_t kLimit = 1000;

/// A folder for one test, gone with it.
class FileSystemOfWindows : public ::testing::Test {
  protected:
    FileSystemOfWindows() {
        static int count = 0;
        folder_ = files().workingFolder() + "\\vexa-test-" + std::to_string(GetCurrentProcessId()) + '-' +
                  std::to_string(++count);
        EXPECT_NE(CreateDirectoryA(folder_.c_str(), nullptr), 0);
    }
    ~FileSystemOfWindows() override {
        WIN32_FIND_DATAW found{};
        const std::wstring folder(folder_.begin(), folder_.end());
        HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &found);
        do {
            const std::wstring path = folder + L'\\' + found.cFileName;
            SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
            DeleteFileW(path.c_str());
        } while (FindNextFileW(search, &found) != 0);
        FindClose(search);
        RemoveDirectoryW(folder.c_str());
    }

    static FileSystem& files() { return FileSystem::current(); }
    [[nodiscard]] string path(const string& name) const { return folder_ + '\\' + name; }
    void write(const string& name, const string& content) const {
        const FileResult result = writeFileAtomically(path(name), content);
        EXPECT_TRUE(result) << result.reason;
    }
    [[nodiscard]] string contentOf(const string& name) const {
        string content;
        const FileResult result = files().read(path(name), content, kLimit);
        EXPECT_TRUE(result) << result.reason;
        return content;
    }
    void protect(const string& name) const {
        SetFileAttributesA(path(name).c_str(), FILE_ATTRIBUTE_READONLY);
    }

    string folder_;
};

TEST_F(FileSystemOfWindows, WritesAndReadsNamesBeyondAscii) {
    for (const string name :
         {"plain", "M\u00fcller.vxv", "\u6f22\u5b57.vxv", "\U0001F600.vxv", "\u0416 \u03c9.vxv"}) {
        write(name, "old");
        write(name, name);
        EXPECT_EQ(contentOf(name), name);
        EXPECT_TRUE(files().isFile(path(name)));
        EXPECT_EQ(files().canonicalPath(path(name)), path(name));
    }
}

TEST_F(FileSystemOfWindows, BytesPassAsTheyAre) {
    const string bytes("a\r\nb\nc\x1A\0d", 9);
    write("bytes", bytes);
    EXPECT_EQ(contentOf("bytes"), bytes);
    OutputFile file;
    ASSERT_TRUE(file.open(path("\u00e4")));
    ASSERT_TRUE(file.write(bytes));
    ASSERT_TRUE(file.flush());
    EXPECT_EQ(contentOf("\u00e4"), bytes);
}

TEST_F(FileSystemOfWindows, TakesBothSeparatorsDrivesAndLongPaths) {
    write("a", "text");
    string slashes = path("a");
    for (char& each : slashes) each = each == '\\' ? '/' : each;
    string content;
    EXPECT_TRUE(files().read(slashes, content, kLimit));
    EXPECT_TRUE(files().read(folder_ + "\\.\\x\\..\\a", content, kLimit));
    EXPECT_EQ(files().canonicalPath(folder_ + "/none/../A"), path("a")) << "a file has one spelling";
    EXPECT_EQ(files().canonicalPath(folder_ + "/none/b"), path("none\\b"));
    EXPECT_EQ(files().canonicalPath(folder_.substr(0, 3)), folder_.substr(0, 2)) << "a drive";
    const string longName(200, 'n');
    write(longName, "far away");
    EXPECT_EQ(contentOf(longName), "far away");
    EXPECT_GT(path(longName).size(), 215U);
}

TEST_F(FileSystemOfWindows, RefusesWhatIsNoFile) {
    const struct {
        string path, reason;
    } cases[] = {
        {path("none"), "No such file or directory"},
        {path("no folder\\none"), "No such file or directory"},
        {folder_, "Is a directory"},
        {"NUL", "Not a file but a device or a pipe"},
        {"", "No such file or directory"},
        {path("a<b"), "No such file or directory"},
    };
    for (const auto& one : cases) {
        string content = "from before";
        const FileResult result = files().read(one.path, content, kLimit);
        EXPECT_FALSE(result) << one.path;
        EXPECT_EQ(result.reason, one.reason) << one.path;
        EXPECT_EQ(content, "");
    }
}

TEST_F(FileSystemOfWindows, HonoursTheLimit) {
    write("long", string(kLimit + 1, 'x'));
    string content;
    EXPECT_EQ(files().read(path("long"), content, kLimit).reason, "The file is larger than ^1 bytes");
    EXPECT_TRUE(files().readStream(path("long"), content, kLimit));
    EXPECT_EQ(content.size(), kLimit + 1);
    EXPECT_TRUE(files().readBeginning(path("long"), content, 5));
    EXPECT_EQ(content, "xxxxx");
}

TEST_F(FileSystemOfWindows, LeavesAProtectedFileAlone) {
    write("a", "old");
    protect("a");
    EXPECT_FALSE(files().isWritable(path("a")));
    EXPECT_EQ(writeFileAtomically(path("a"), "new").reason, "Permission denied");
    EXPECT_EQ(contentOf("a"), "old");
    EXPECT_TRUE(files().isWritable(path("b")));
    EXPECT_FALSE(files().isWritable(path("none\\b")));
    EXPECT_FALSE(files().isWritable(folder_));
}

TEST_F(FileSystemOfWindows, AFailedReplacementLeavesTheOldFileAndNoOther) {
    write("a", "old");
    EXPECT_FALSE(files().replace(path("none"), path("a")));
    EXPECT_EQ(contentOf("a"), "old");
    string temporary;
    ASSERT_TRUE(files().createTemporary(path("a"), temporary));
    EXPECT_EQ(temporary.substr(0, temporary.rfind('\\')), folder_) << "in the same folder";
    EXPECT_TRUE(files().isFile(temporary));
    EXPECT_TRUE(files().append(temporary, "new"));
    EXPECT_TRUE(files().flush(temporary));
    EXPECT_TRUE(files().replace(temporary, path("a")));
    EXPECT_FALSE(files().isFile(temporary));
    EXPECT_EQ(contentOf("a"), "new");
    EXPECT_TRUE(files().remove(path("a")));
    EXPECT_FALSE(files().isFile(path("a")));
}

}  // namespace
}  // namespace vexa
