#include <gtest/gtest.h>
#include <windows.h>

#include <thread>
#include <vector>

#include "backend/platform/file_system.h"
#include "backend/platform/file_system_native.h"
#include "backend/platform/output_file.h"
#include "backend/platform/temporary_files.h"
#include "backend/platform/windows_path.h"
#include "tests/unit/platform/replaced_file.h"

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
    ~FileSystemOfWindows() override { removeTree(std::wstring(folder_.begin(), folder_.end())); }

    static void removeTree(const std::wstring& folder) {
        WIN32_FIND_DATAW found{};
        HANDLE search = FindFirstFileW(systemPath(folder + L"\\*").c_str(), &found);
        do {
            const std::wstring name = found.cFileName;
            const std::wstring path = systemPath(folder + L'\\' + name);
            SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
            const bool isFolder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
            if (isFolder && name != L"." && name != L"..") removeTree(folder + L'\\' + name);
            DeleteFileW(path.c_str());
        } while (FindNextFileW(search, &found) != 0);
        FindClose(search);
        RemoveDirectoryW(systemPath(folder).c_str());
    }

    static FileSystem& files() { return FileSystem::current(); }
    [[nodiscard]] string path(const string& name) const { return folder_ + '\\' + name; }
    void write(const string& name, const string& content) const {
        const FileResult result = replaceFile(path(name), content);
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

TEST_F(FileSystemOfWindows, TakesPathsBeyondTheUsualLimit) {
    string deep = folder_;
    for (int i = 0; i < 3; ++i) deep += "\\" + string(80, static_cast<char>('a' + i));
    EXPECT_TRUE(systemPath(deep).starts_with(L"\\\\?\\"));
    string below = folder_;
    for (int i = 0; i < 3; ++i) {
        below += "\\" + string(80, static_cast<char>('a' + i));
        ASSERT_NE(CreateDirectoryW(systemPath(below).c_str(), nullptr), 0) << below;
    }
    const string name = deep + "\\\u00e4.txt";
    ASSERT_TRUE(replaceFile(name, "far away"));
    string content;
    EXPECT_TRUE(files().read(name, content, kLimit));
    EXPECT_EQ(content, "far away");
    EXPECT_EQ(files().canonicalPath(name), name);
}

TEST(PathsOfWindows, AreTextsUntilTheyAreUsed) {
    const string longName(300, 'n');
    const std::wstring wideName(300, L'n');
    EXPECT_EQ(systemPath("c:/a/b"), L"c:\\a\\b");
    EXPECT_EQ(systemPath("//server/share/a"), L"\\\\server\\share\\a");
    EXPECT_EQ(systemPath("c:\\" + longName), L"\\\\?\\c:\\" + wideName);
    EXPECT_EQ(systemPath("\\\\.\\c:\\" + longName), L"\\\\.\\c:\\" + wideName);
    EXPECT_EQ(streamPath("c:/" + longName).native(), L"\\\\?\\c:\\" + wideName) << "for streams as well";
    EXPECT_EQ(systemPath("\\\\server\\share\\" + longName), L"\\\\?\\UNC\\server\\share\\" + wideName);
    EXPECT_EQ(pathOfSystem(L"\\\\?\\UNC\\server\\share\\a"), "\\\\server\\share\\a");
    EXPECT_EQ(pathOfSystem(L"\\\\?\\c:\\a"), "c:\\a");
    EXPECT_EQ(pathOfSystem(L"\\\\?\\Volume{1}\\a"), "\\\\?\\Volume{1}\\a");
    EXPECT_EQ(pathOfSystem(L"c:\\a"), "c:\\a");
}

TEST(PathsOfWindows, BeginWithADriveOrAShare) {
    const struct {
        const wchar_t* path;
        std::size_t length;
    } cases[] = {
        {L"c:\\a", 2},      {L"\\\\server\\share\\a", 14}, {L"\\\\server\\share", 14},
        {L"\\\\server", 8}, {L"\\\\?\\c:\\a", 6},          {L"\\\\?\\UNC\\server\\share\\a", 20},
        {L"", 0},
    };
    for (const auto& one : cases) EXPECT_EQ(lengthOfRoot(one.path), one.length) << pathOfSystem(one.path);
}

TEST_F(FileSystemOfWindows, AShareThatIsNotThereStaysAsItIs) {
    EXPECT_EQ(files().canonicalPath("\\\\no.such.server\\share\\a"), "\\\\no.such.server\\share\\a");
}

TEST_F(FileSystemOfWindows, ADeviceIsNoFile) {
    string content;
    for (const string name : {"NUL", "CON", "PRN", "COM9", "LPT9", "CONIN$", "CONOUT$", "\\\\.\\COM9"}) {
        EXPECT_FALSE(files().isFile(name)) << name;
        EXPECT_FALSE(files().isWritable(name)) << name;
    }
    EXPECT_EQ(files().readBeginning("NUL", content, 5).reason, "Not a file but a device or a pipe");
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

TEST_F(FileSystemOfWindows, AFileIsNoFolder) {
    write("a", "old");
    for (const string below : {"a\\b", "a\\b\\c", "a\\"}) {
        string content;
        EXPECT_EQ(files().read(path(below), content, kLimit).reason, "Not a directory") << below;
        EXPECT_EQ(replaceFile(path(below), "new").reason, "Not a directory") << below;
        EXPECT_FALSE(files().isWritable(path(below))) << below;
    }
    EXPECT_EQ(replaceFile(path("none\\b"), "new").reason, "No such file or directory");
    EXPECT_EQ(contentOf("a"), "old");
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
    EXPECT_EQ(replaceFile(path("a"), "new").reason, "Permission denied");
    EXPECT_EQ(contentOf("a"), "old");
    EXPECT_TRUE(files().isWritable(path("b")));
    EXPECT_FALSE(files().isWritable(path("none\\b")));
    EXPECT_FALSE(files().isWritable(folder_));
}

TEST_F(FileSystemOfWindows, ANameWithAColonIsNotWritten) {
    for (const string name : {"a:s", "a::$DATA", "b:s"}) {
        if (name[0] == 'a') write("a", "old");
        EXPECT_FALSE(files().isWritable(path(name))) << name;
        EXPECT_EQ(replaceFile(path(name), "new").reason, "Invalid argument") << name;
    }
    EXPECT_EQ(contentOf("a"), "old");
    EXPECT_FALSE(files().isFile(path("b")));
    WIN32_FIND_DATAA found{};
    EXPECT_EQ(FindFirstFileA(path("*.tmp").c_str(), &found), INVALID_HANDLE_VALUE) << found.cFileName;
}

TEST_F(FileSystemOfWindows, AReplacedFileKeepsItsAttributes) {
    write("a", "old");
    constexpr DWORD kWanted = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    ASSERT_NE(SetFileAttributesA(path("a").c_str(), kWanted), 0);
    write("a", "new");
    EXPECT_EQ(GetFileAttributesA(path("a").c_str()) & kWanted, kWanted);
    EXPECT_EQ(contentOf("a"), "new");
}

TEST_F(FileSystemOfWindows, WaitsForAFileThatIsHeldForAMoment) {
    const auto holdWhile = [this](auto action) {
        HANDLE held = CreateFileA(path("a").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        ASSERT_NE(held, INVALID_HANDLE_VALUE);
        std::thread release([held] {
            Sleep(15);  // a fraction of what is waited for, so that a busy machine makes no difference
            CloseHandle(held);
        });
        const FileResult result = action();
        release.join();
        EXPECT_TRUE(result) << result.reason;
    };
    write("a", "old");
    string temporary;
    string content;
    holdWhile([&] { return files().append(path("a"), ", older"); });
    holdWhile([&] { return files().flush(path("a")); });
    holdWhile([&] { return files().createTemporary(path("a"), temporary); });
    holdWhile([&] { return files().replace(temporary, path("a")); });
    holdWhile([&] { return files().read(path("a"), content, kLimit); });
}

TEST_F(FileSystemOfWindows, AFileThatIsHeldIsAFile) {
    write("a", "old");
    HANDLE held = CreateFileA(path("a").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_TRUE(files().isFile(path("a")));
    EXPECT_EQ(replaceFile(path("a"), "new").reason, "Device or resource busy");
    CloseHandle(held);
    EXPECT_EQ(contentOf("a"), "old");
}

/// How many have rights to a file, and whether everybody is among them.
struct Rights {
    DWORD holders = 0;
    bool everybody = false;
};

Rights rightsTo(const string& name) {
    std::vector<char> bytes(1024);
    std::vector<char> everybody(SECURITY_MAX_SID_SIZE);
    DWORD size = 0;
    auto length = static_cast<DWORD>(everybody.size());
    EXPECT_NE(CreateWellKnownSid(WinWorldSid, nullptr, everybody.data(), &length), 0);
    EXPECT_NE(GetFileSecurityA(name.c_str(), DACL_SECURITY_INFORMATION, bytes.data(),
                               static_cast<DWORD>(bytes.size()), &size),
              0);
    ACL* list = nullptr;
    BOOL present = FALSE;
    BOOL byDefault = FALSE;
    EXPECT_NE(GetSecurityDescriptorDacl(bytes.data(), &present, &list, &byDefault), 0);
    Rights rights{list->AceCount};
    for (DWORD i = 0; i < list->AceCount; ++i) {
        void* entry = nullptr;
        EXPECT_NE(GetAce(list, i, &entry), 0);
        if (EqualSid(&static_cast<ACCESS_ALLOWED_ACE*>(entry)->SidStart, everybody.data()) != 0) {
            rights.everybody = true;
        }
    }
    return rights;
}

TEST_F(FileSystemOfWindows, APrivateFileIsForItsOwnerAlone) {
    string open;
    string closed;
    ASSERT_TRUE(files().createTemporary(path("a"), open));
    ASSERT_TRUE(files().createPrivateTemporary(path("a"), closed));
    EXPECT_LT(rightsTo(closed).holders, rightsTo(open).holders);
    EXPECT_FALSE(rightsTo(closed).everybody);
    EXPECT_TRUE(files().append(closed, "text"));
    EXPECT_TRUE(files().replace(closed, path("a")));
    EXPECT_EQ(contentOf("a"), "text");
    EXPECT_FALSE(rightsTo(path("a")).everybody);
    ASSERT_TRUE(files().createTemporary(path("a"), closed));
    EXPECT_FALSE(rightsTo(closed).everybody) << "and so is what takes its place";
}

TEST_F(FileSystemOfWindows, TemporaryFilesAreTakenAlongAtTheEnd) {
    string left;
    string replaced;
    string removed;
    ASSERT_TRUE(files().createTemporary(path("a"), left));
    ASSERT_TRUE(files().createTemporary(path("b"), replaced));
    ASSERT_TRUE(files().createTemporary(path("c"), removed));
    ASSERT_TRUE(files().replace(replaced, path("b")));
    ASSERT_TRUE(files().remove(removed));
    // What is made under these names now is nobody's temporary file.
    write(replaced.substr(folder_.size() + 1), "new");
    write(removed.substr(folder_.size() + 1), "new");
    removeTemporaries();
    EXPECT_FALSE(files().isFile(left));
    EXPECT_TRUE(files().isFile(path("b")));
    EXPECT_TRUE(files().isFile(replaced));
    EXPECT_TRUE(files().isFile(removed));
    EXPECT_FALSE(files().remove(left)) << "and is forgotten";
}

TEST_F(FileSystemOfWindows, OneFileMayHaveManyNames) {
    write("a", "x");
    write("b", "x");
    EXPECT_TRUE(files().isSameFile(path("a"), path("A")));
    EXPECT_TRUE(files().isSameFile(path("a"), path(".\\a")));
    EXPECT_TRUE(files().isSameFile(path("a"), path("none\\..\\a")));
    EXPECT_FALSE(files().isSameFile(path("a"), path("b")));
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
