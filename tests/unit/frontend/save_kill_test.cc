// A save that is stopped dead at every single file operation: the file must then hold its old or its new
// content.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <random>

#include "backend/platform/file_system.h"
#include "frontend/store/limits.h"
#include "tests/unit/frontend/sample_documents.h"

namespace vexa::frontend {
namespace {

/// The system's files, until the process ends at the `stop`-th changing operation: before it, or with half of
/// it done.
class StoppingFileSystem : public FileSystem {
  public:
    StoppingFileSystem(FileSystem& system, int stop, bool halfway)
        : system_(system), left_(stop), halfway_(halfway) {}

    FileResult read(const std::string& path, std::string& content, std::uint64_t limit) override {
        return system_.read(path, content, limit);
    }
    FileResult readStream(const std::string& path, std::string& content, std::uint64_t limit) override {
        return system_.readStream(path, content, limit);
    }
    bool isFile(const std::string& path) override { return system_.isFile(path); }
    bool isFolder(const std::string& path) override { return system_.isFolder(path); }
    std::string workingFolder() override { return system_.workingFolder(); }
    std::string canonicalPath(const std::string& path) override { return system_.canonicalPath(path); }
    FileResult createTemporary(const std::string& path, std::string& temporary) override {
        return step([&] { return system_.createTemporary(path, temporary); });
    }
    FileResult append(const std::string& path, std::string_view bytes) override {
        if (left_ == 1 && halfway_) {
            static_cast<void>(system_.append(path, bytes.substr(0, bytes.size() / 2)));
        }
        return step([&] { return system_.append(path, bytes); });
    }
    FileResult flush(const std::string& path) override {
        return step([&] { return system_.flush(path); });
    }
    FileResult replace(const std::string& from, const std::string& to) override {
        return step([&] { return system_.replace(from, to); });
    }
    FileResult remove(const std::string& path) override {
        return step([&] { return system_.remove(path); });
    }

  private:
    template <typename Operation>
    FileResult step(Operation operation) {
        if (--left_ == 0) {
            _exit(stoppedStatus);
        }
        return operation();
    }

  public:
    static constexpr int stoppedStatus = 77;

  private:
    FileSystem& system_;
    int left_;
    bool halfway_;
};

// Large and hard to compress, so that it takes several blocks.
std::unique_ptr<ViewerDocument> makeLarge() {
    std::mt19937 random(7);
    std::string text(3U << 20U, ' ');
    for (char& character : text) {
        character = static_cast<char>('0' + random() % 64);
    }
    auto document = std::make_unique<ViewerDocument>();
    document->add(makeItem("Large", plainText(text)));
    return document;
}

int saveInChild(const ViewerDocument& document, const std::string& path, int stop, bool halfway) {
    const pid_t child = fork();
    if (child == 0) {
        StoppingFileSystem files(FileSystem::current(), stop, halfway);
        FileSystem::install(&files);
        _exit(saveDocument(document, path, {}) ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class SaveKill : public testing::TestWithParam<bool> {
  protected:
    void SetUp() override {
        folder_ = std::filesystem::temp_directory_path() / ("vexa-kill-" + std::to_string(getpid()));
        std::filesystem::remove_all(folder_);  // of a process with this number that was ended amid its tests
        std::filesystem::create_directory(folder_);
        path_ = (folder_ / "document.vxv").string();
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }
    std::string content() {
        std::string bytes;
        EXPECT_TRUE(FileSystem::current().read(path_, bytes, limits::fileBytes));
        return bytes;
    }

    std::filesystem::path folder_;
    std::string path_;
};

TEST_P(SaveKill, LeavesTheOldOrTheNewContent) {
    const auto oldDocument = makeEveryKind();
    const auto newDocument = makeLarge();
    const std::string newBytes = saved(*newDocument);
    ASSERT_TRUE(saveDocument(*oldDocument, path_, {}));
    const std::string oldBytes = content();

    int stop = 0;
    int status = StoppingFileSystem::stoppedStatus;
    while (status == StoppingFileSystem::stoppedStatus && stop < 50) {
        status = saveInChild(*newDocument, path_, ++stop, GetParam());
        const std::string bytes = content();
        ASSERT_TRUE(bytes == oldBytes || bytes == newBytes) << "stopped at operation " << stop;
    }
    EXPECT_EQ(status, 0);
    EXPECT_GT(stop, 5) << "the document takes several blocks";
    EXPECT_EQ(content(), newBytes);
    EXPECT_NE(opened(oldBytes), nullptr);
    EXPECT_NE(opened(newBytes), nullptr);
}

TEST_P(SaveKill, OfANewFileLeavesNoneOrAWholeOne) {
    const auto document = makeEveryKind();
    const std::string newBytes = saved(*document);
    int status = StoppingFileSystem::stoppedStatus;
    for (int stop = 1; status == StoppingFileSystem::stoppedStatus && stop < 50; ++stop) {
        status = saveInChild(*document, path_, stop, GetParam());
        ASSERT_TRUE(!FileSystem::current().isFile(path_) || content() == newBytes);
    }
    EXPECT_EQ(status, 0);
    EXPECT_EQ(content(), newBytes);
}

INSTANTIATE_TEST_SUITE_P(BeforeAndHalfway, SaveKill, testing::Bool());

}  // namespace
}  // namespace vexa::frontend
