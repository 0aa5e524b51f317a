#include "backend/platform/file_system.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

#include "backend/platform/kept_file.h"
#include "backend/strings/dictionary.h"
#include "tests/unit/platform/replaced_file.h"

namespace vexa {
namespace {

namespace fs = std::filesystem;
using std::string;

constexpr std::uint64_t kLimit = 1000;

/// A folder for one test, gone with it.
class FileSystemTest : public ::testing::Test {
  protected:
    FileSystemTest() {
        string name = (fs::temp_directory_path() / "vexa-test-XXXXXX").string();
        folder_ = mkdtemp(name.data());
    }
    ~FileSystemTest() override {
        FileSystem::install(nullptr);
        fs::remove_all(folder_);
    }

    [[nodiscard]] string path(const char* name) const { return (folder_ / name).string(); }
    void write(const char* name, const string& content) const { std::ofstream(folder_ / name) << content; }
    [[nodiscard]] string contentOf(const char* name) const {
        std::ifstream file(folder_ / name);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    [[nodiscard]] std::size_t filesInFolder() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder_), {}));
    }
    [[nodiscard]] mode_t modeOf(const char* name) const {
        struct stat status {};
        EXPECT_EQ(stat(path(name).c_str(), &status), 0);
        return status.st_mode & 0777U;
    }

    fs::path folder_;
};

/// The superuser may write everywhere, so the test of rights is carried out as another user.
class OrdinaryUser {
  public:
    OrdinaryUser() {
        constexpr uid_t kNobody = 65534;
        if (superuser_) {
            EXPECT_EQ(seteuid(kNobody), 0);
        }
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() {
        if (superuser_) {
            EXPECT_EQ(seteuid(0), 0);
        }
    }

  private:
    bool superuser_ = geteuid() == 0;
};

TEST_F(FileSystemTest, ReadsWholeFilesUpToTheLimit) {
    write("a", string(kLimit, 'x'));
    write("b", string(kLimit + 1, 'x'));
    write("empty", "");
    string content = "from before";
    EXPECT_TRUE(FileSystem::current().read(path("empty"), content, kLimit));
    EXPECT_EQ(content, "");
    EXPECT_TRUE(FileSystem::current().read(path("a"), content, kLimit));
    EXPECT_EQ(content, string(kLimit, 'x'));
    const FileResult tooLarge = FileSystem::current().read(path("b"), content, kLimit);
    EXPECT_FALSE(tooLarge);
    EXPECT_EQ(shownReason(tooLarge), "The file is larger than 1000 bytes");
    EXPECT_EQ(content, "");
}

TEST_F(FileSystemTest, ReadsPathsWithBackslashes) {
    fs::create_directory(folder_ / "sub");
    write("sub/a", "text");
    string content;
    EXPECT_TRUE(FileSystem::current().read(toBackslashPath(path("sub/a")), content, kLimit));
    EXPECT_EQ(content, "text");
}

TEST_F(FileSystemTest, RefusesWhatIsNoFile) {
    ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
    const struct {
        string path, reason;
    } cases[] = {
        {path("none"), "No such file or directory"},
        {folder_.string(), "Is a directory"},
        {path("pipe"), "Not a file but a device or a pipe"},
        {"/dev/zero", "Not a file but a device or a pipe"},
        {"", "No such file or directory"},
    };
    for (const auto& one : cases) {
        string content;
        const FileResult result = FileSystem::current().read(one.path, content, kLimit);
        EXPECT_FALSE(result) << one.path;
        EXPECT_EQ(result.reason, one.reason) << one.path;
    }
}

TEST_F(FileSystemTest, ReadHonoursTheLimitOfFilesThatReportNoSize) {
    string content;
    EXPECT_FALSE(FileSystem::current().read("/proc/self/maps", content, 10));
    EXPECT_EQ(content, "");
}

TEST_F(FileSystemTest, StreamsAreReadToTheirEndWhateverTheyAre) {
    write("long", string(kLimit + 1, 'x'));
    ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
    std::thread writer([this] { write("pipe", "from the pipe"); });
    FileSystem& files = FileSystem::current();
    string content = "from before";
    EXPECT_TRUE(files.readStream(path("pipe"), content, kLimit));
    writer.join();
    EXPECT_EQ(content, "from the pipe");
    EXPECT_TRUE(files.readStream("/dev/null", content, kLimit));
    EXPECT_EQ(content, "");
    EXPECT_TRUE(files.readStream(path("long"), content, kLimit)) << "a file tells its size";
    EXPECT_EQ(content.size(), kLimit + 1);
}

TEST_F(FileSystemTest, StreamsHaveALimitAndAreNoFolders) {
    string content;
    const FileResult endless = FileSystem::current().readStream("/dev/zero", content, kLimit);
    EXPECT_FALSE(endless);
    EXPECT_EQ(shownReason(endless), "The file is larger than 1000 bytes");
    EXPECT_EQ(content, "");
    EXPECT_EQ(FileSystem::current().readStream(folder_.string(), content, kLimit).reason, "Is a directory");
    EXPECT_EQ(FileSystem::current().readStream(path("none"), content, kLimit).reason,
              "No such file or directory");
}

TEST_F(FileSystemTest, AllPathsOfAFileHaveOneCanonicalForm) {
    fs::create_directory(folder_ / "sub");
    write("sub/file", "");
    fs::create_symlink("sub/file", folder_ / "link");
    fs::create_symlink("link", folder_ / "second");
    fs::create_directory_symlink("sub", folder_ / "folder");
    FileSystem& files = FileSystem::current();
    const string file = (fs::canonical(folder_) / "sub" / "file").string();
    for (const char* name : {"sub/file", "link", "second", "folder/file", "folder/../sub/./file"}) {
        EXPECT_EQ(files.canonicalPath(path(name)), file) << name;
        EXPECT_EQ(files.canonicalPath(toBackslashPath(path(name))), file) << name;
    }
    EXPECT_EQ(files.canonicalPath("."), fs::canonical(fs::current_path()).string());
}

TEST_F(FileSystemTest, CanonicalPathsOfWhatDoesNotExist) {
    fs::create_directory(folder_ / "sub");
    fs::create_directory_symlink("sub", folder_ / "folder");
    fs::create_symlink("sub/new", folder_ / "dangling");
    fs::create_symlink("loop", folder_ / "loop");
    FileSystem& files = FileSystem::current();
    const fs::path real = fs::canonical(folder_);
    EXPECT_EQ(files.canonicalPath(path("folder/new")), (real / "sub/new").string());
    EXPECT_EQ(files.canonicalPath(path("dangling")), (real / "sub/new").string());
    EXPECT_EQ(files.canonicalPath(path("none/../new")), (real / "new").string());
    EXPECT_EQ(files.canonicalPath(path("loop")), path("loop"));
}

TEST_F(FileSystemTest, TellsFilesFromFolders) {
    write("a", "");
    FileSystem& files = FileSystem::current();
    EXPECT_TRUE(files.isFile(path("a")));
    EXPECT_FALSE(files.isFolder(path("a")));
    EXPECT_TRUE(files.isFolder(toBackslashPath(folder_.string())));
    EXPECT_FALSE(files.isFile(folder_.string()));
    EXPECT_FALSE(files.isFile(path("none")));
    EXPECT_EQ(files.workingFolder(), fs::current_path().string());
}

TEST_F(FileSystemTest, WritesNewAndOldFiles) {
    EXPECT_TRUE(replaceFile(path("a"), "first"));
    EXPECT_EQ(contentOf("a"), "first");
    EXPECT_TRUE(replaceFile(toBackslashPath(path("a")), "second"));
    EXPECT_EQ(contentOf("a"), "second");
    EXPECT_TRUE(replaceFile(path("a"), ""));
    EXPECT_EQ(contentOf("a"), "");
    EXPECT_EQ(filesInFolder(), 1U);
}

TEST_F(FileSystemTest, ANewFileHasTheUsualRightsAndAnOldOneKeepsItsOwn) {
    const mode_t mask = umask(027);
    EXPECT_TRUE(replaceFile(path("new"), "x"));
    write("old", "x");
    ASSERT_EQ(chmod(path("old").c_str(), 0604), 0);
    EXPECT_TRUE(replaceFile(path("old"), "y"));
    umask(mask);
    EXPECT_EQ(modeOf("new"), 0640U);
    EXPECT_EQ(modeOf("old"), 0604U);
}

TEST_F(FileSystemTest, ANewPrivateFileIsItsOwnersAlone) {
    const mode_t mask = umask(0);
    write("old", "x");
    ASSERT_EQ(chmod(path("old").c_str(), 0644), 0);
    string made;
    string kept;
    EXPECT_TRUE(FileSystem::current().createPrivateTemporary(path("new"), made));
    EXPECT_TRUE(FileSystem::current().createPrivateTemporary(path("old"), kept));
    umask(mask);
    EXPECT_EQ(modeOf(fs::path(made).filename().c_str()), 0600U);
    EXPECT_EQ(modeOf(fs::path(kept).filename().c_str()), 0644U);
}

TEST_F(FileSystemTest, AFileKeepsItsOwnerItsGroupAndItsAttributes) {
    if (geteuid() != 0) GTEST_SKIP() << "only the superuser can give files away";
    write("a", "old");
    ASSERT_EQ(chown(path("a").c_str(), 1234, 2345), 0);
    ASSERT_EQ(chmod(path("a").c_str(), 0660), 0);
    const bool attributes = setxattr(path("a").c_str(), "user.note", "kept", 4, 0) == 0;
    EXPECT_TRUE(replaceFile(path("a"), "new"));
    struct stat status {};
    ASSERT_EQ(stat(path("a").c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 1234U);
    EXPECT_EQ(status.st_gid, 2345U);
    EXPECT_EQ(modeOf("a"), 0660U);
    string value(4, ' ');
    if (attributes) {
        EXPECT_EQ(getxattr(path("a").c_str(), "user.note", value.data(), value.size()), 4);
        EXPECT_EQ(value, "kept");
    }
}

TEST_F(FileSystemTest, AGroupThatCannotBeKeptGetsNoMoreThanEverybody) {
    if (geteuid() != 0) GTEST_SKIP() << "only the superuser can make a file of another group";
    write("a", "old");
    ASSERT_EQ(chown(path("a").c_str(), 65534, 2345), 0);
    ASSERT_EQ(chmod(path("a").c_str(), 0664), 0);
    ASSERT_EQ(chmod(folder_.c_str(), 0777), 0);
    {
        const OrdinaryUser user;
        EXPECT_TRUE(replaceFile(path("a"), "new"));
    }
    struct stat status {};
    ASSERT_EQ(stat(path("a").c_str(), &status), 0);
    EXPECT_NE(status.st_gid, 2345U);
    EXPECT_EQ(modeOf("a"), 0644U);
}

TEST_F(FileSystemTest, TellsAFileFromWhatTakesItsPlace) {
    FileSystem& files = FileSystem::current();
    EXPECT_FALSE(files.state(path("a")));
    EXPECT_FALSE(files.state(folder_.string()));
    write("a", "old");
    const auto old = files.state(path("a"));
    ASSERT_TRUE(old);
    EXPECT_EQ(files.state(path("a"))->content, old->content);
    EXPECT_TRUE(replaceFile(path("a"), "new"));
    const auto now = files.state(path("a"));
    ASSERT_TRUE(now);
    EXPECT_NE(now->content, old->content);
    EXPECT_EQ(now->rights, old->rights);
    ASSERT_EQ(chmod(path("a").c_str(), 0600), 0);
    EXPECT_NE(files.state(path("a"))->rights, old->rights);
    struct timespec times[2] = {{0, 0}, {1'000'000'000, 5}};  // in the year 2001, wherever
    ASSERT_EQ(utimensat(AT_FDCWD, path("a").c_str(), times, 0), 0);
    EXPECT_EQ(files.state(path("a"))->changed.year, 2001);
    EXPECT_EQ(shownTime({2026, 3, 5, 10, 7, 9}), "2026-03-05 10:07:09");
}

/// How a process ends that makes temporary files for this target and gets `signal`, to the process and once
/// more.
int statusAfter(int signal, const string& target) {
    constexpr int count = 100;
    const pid_t child = fork();
    if (child == 0) {
        const rlimit noCore{0, 0};
        setrlimit(RLIMIT_CORE, &noCore);
        bool made = true;
        for (int i = 0; i < count; ++i) {
            string temporary;
            made = FileSystem::current().createTemporary(target, temporary) && made;
        }
        const std::thread other([] {
            for (;;) pause();  // either thread may get it
        });
        kill(getpid(), signal);
        raise(signal);
        _exit(made ? 7 : 8);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

TEST_F(FileSystemTest, ASignalThatEndsTheProcessTakesItsTemporaryFilesAlong) {
    string ours;
    ASSERT_TRUE(FileSystem::current().createTemporary(path("a"), ours));
    for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGQUIT, SIGXCPU}) {
        const int status = statusAfter(signal, path("a"));
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << status;
        EXPECT_EQ(filesInFolder(), 1U) << "that of the parent stays";
    }
    EXPECT_TRUE(FileSystem::current().remove(ours));
}

TEST_F(FileSystemTest, OneFileMayHaveManyNames) {
    FileSystem& files = FileSystem::current();
    write("a", "x");
    write("b", "x");
    fs::create_directory(folder_ / "sub");
    fs::create_symlink("a", folder_ / "link");
    fs::create_hard_link(folder_ / "a", folder_ / "hard");
    for (const char* const name : {"a", "./a", "sub/../a", "link", "hard"}) {
        EXPECT_TRUE(files.isSameFile(path("a"), path(name))) << name;
    }
    EXPECT_FALSE(files.isSameFile(path("a"), path("b")));
    EXPECT_TRUE(files.isSameFile(path("none"), path("sub/../none"))) << "not yet there";
    EXPECT_FALSE(files.isSameFile(path("a"), path("none")));
    EXPECT_TRUE(files.state(path("hard"))->hasOtherNames);
    EXPECT_FALSE(files.state(path("b"))->hasOtherNames);
    keepFile(path("hard"));
    EXPECT_TRUE(isKept(path("link")));
    EXPECT_FALSE(isKept(path("b")));
    keepFile("");
    EXPECT_FALSE(isKept(path("a")));
}

TEST_F(FileSystemTest, WritesThroughSymbolicLinks) {
    fs::create_directory(folder_ / "sub");
    write("sub/file", "old");
    fs::create_symlink("sub/file", folder_ / "link");
    fs::create_symlink("link", folder_ / "second");
    fs::create_symlink("sub/new", folder_ / "dangling");
    EXPECT_TRUE(replaceFile(path("second"), "new"));
    EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
    EXPECT_TRUE(fs::is_symlink(folder_ / "second"));
    EXPECT_EQ(contentOf("sub/file"), "new");
    EXPECT_TRUE(replaceFile(path("dangling"), "made"));
    EXPECT_EQ(contentOf("sub/new"), "made");
}

TEST_F(FileSystemTest, RefusesTargetsThatCannotBeReplaced) {
    fs::create_symlink("loop", folder_ / "loop");
    write("file", "");
    for (const string& target :
         {folder_.string(), path("loop"), path("none/a"), path("file/a"), string("/dev/null")}) {
        const FileResult result = replaceFile(target, "x");
        EXPECT_FALSE(result) << target;
        EXPECT_NE(result.reason, "") << target;
    }
    EXPECT_EQ(filesInFolder(), 2U);
}

TEST_F(FileSystemTest, LeavesAProtectedFileAlone) {
    write("a", "old");
    ASSERT_EQ(chmod(folder_.c_str(), 0777), 0);
    ASSERT_EQ(chmod(path("a").c_str(), 0444), 0);
    FileResult result;
    {
        const OrdinaryUser user;
        result = replaceFile(path("a"), "new");
    }
    EXPECT_FALSE(result);
    EXPECT_EQ(result.reason, "Permission denied");
    EXPECT_EQ(contentOf("a"), "old");
    EXPECT_EQ(filesInFolder(), 1U);
}

TEST_F(FileSystemTest, TellsWhatMayBeWritten) {
    write("a", "old");
    FileSystem& files = FileSystem::current();
    EXPECT_TRUE(files.isWritable(path("a")));
    EXPECT_TRUE(files.isWritable(path("new")));
    EXPECT_FALSE(files.isWritable(path("nowhere/new")));
    EXPECT_FALSE(files.isWritable(path("a/new")));
    EXPECT_FALSE(files.isWritable(path("")));
    EXPECT_FALSE(files.isWritable("/dev/null"));
}

TEST_F(FileSystemTest, TellsThatProtectedFilesAndFoldersMayNotBeWritten) {
    write("a", "old");
    ASSERT_EQ(chmod(folder_.c_str(), 0777), 0);
    ASSERT_EQ(chmod(path("a").c_str(), 0444), 0);
    ASSERT_EQ(mkdir(path("closed").c_str(), 0555), 0);
    const OrdinaryUser user;
    EXPECT_FALSE(FileSystem::current().isWritable(path("a")));
    EXPECT_FALSE(FileSystem::current().isWritable(path("closed/new")));
    EXPECT_TRUE(FileSystem::current().isWritable(path("new")));
}

TEST(PathForms, ExchangeTheSeparators) {
    EXPECT_EQ(toBackslashPath("/a/b\\c"), "\\a\\b\\c");
    EXPECT_EQ(toNativePath("\\a/b\\c"), "/a/b/c");
}

}  // namespace
}  // namespace vexa
