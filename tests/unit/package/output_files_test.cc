#include "frontend/package/output_files.h"

#include <gtest/gtest.h>

#include "tests/unit/frontend/memory_file_system.h"

namespace vexa::frontend {
namespace {

using Files = std::map<std::string, std::string>;

TEST(OutputFiles, TakeTheirPlacesTogether) {
    MemoryFileSystem system;
    system.files = {{"/docs/page", "old page"}, {"/docs/other", "other"}};
    OutputFiles files;
    std::size_t page = 0;
    ASSERT_TRUE(files.begin("/docs/page", page));
    files.setMain(page);
    ASSERT_TRUE(files.write(page, "new "));
    ASSERT_TRUE(files.add("/docs/picture", "pixels"));
    ASSERT_TRUE(files.sink(page)("page"));
    EXPECT_EQ(system.files["/docs/page"], "old page") << "until all are whole";
    ASSERT_TRUE(files.commit());
    EXPECT_EQ(system.files,
              (Files{{"/docs/page", "new page"}, {"/docs/picture", "pixels"}, {"/docs/other", "other"}}));
}

TEST(OutputFiles, TheMainOneComesLast) {
    MemoryFileSystem system;
    OutputFiles files;
    std::size_t page = 0;
    ASSERT_TRUE(files.begin("/page", page));
    files.setMain(page);
    ASSERT_TRUE(files.add("/one", "1"));
    ASSERT_TRUE(files.add("/two", "2"));
    ASSERT_TRUE(files.commit());
    EXPECT_EQ(system.replaced, (std::vector<std::string>{"/one", "/two", "/page"}));
}

TEST(OutputFiles, GivenUpLeaveNothing) {
    MemoryFileSystem system;
    system.files = {{"/a", "old"}};
    {
        OutputFiles files;
        ASSERT_TRUE(files.add("/a", "new"));
        ASSERT_TRUE(files.add("/b", "new"));
    }
    EXPECT_EQ(system.files, (Files{{"/a", "old"}}));
}

/// Three files, the second of them over an old one; several blocks each.
PackageResult writeThree() {
    OutputFiles files;
    std::size_t main = 0;
    PackageResult result = files.begin("/main", main);
    files.setMain(main);
    const std::string much(3U << 20U, 'x');
    for (const char* path : {"/a", "/old"}) {
        result = result ? files.add(path, much) : result;
    }
    result = result ? files.write(main, much) : result;
    return result ? files.commit() : result;
}

TEST(OutputFiles, AFailureOfAnyOperationLeavesOldOrWholeFilesAndNothingElse) {
    const std::string much(3U << 20U, 'x');
    int operation = 0;
    PackageResult result = PackageProblem::cannotWrite;
    while (!result && operation < 100) {
        MemoryFileSystem system;
        system.files = {{"/old", "old"}};
        system.failingOperation = ++operation;
        result = writeThree();
        if (!result) {
            EXPECT_EQ(result.problem, PackageProblem::cannotWrite);
            EXPECT_EQ(result.shownDetail(), "disk full");
            EXPECT_EQ(system.files.size(), 1U) << operation;
            EXPECT_TRUE(system.files["/old"] == "old" || system.files["/old"] == much) << operation;
        } else {
            EXPECT_EQ(system.files.size(), 3U);
        }
    }
    EXPECT_TRUE(result);
    EXPECT_EQ(operation, 3 + 9 + 3 + 3 + 1) << "made, filled in three blocks each, flushed, put in place";
}

TEST(OutputFiles, AFailureStays) {
    MemoryFileSystem system;
    system.failingOperation = 2;
    OutputFiles files;
    std::size_t file = 0;
    ASSERT_TRUE(files.begin("/a", file));
    EXPECT_FALSE(files.write(file, std::string(2U << 20U, 'x')));
    EXPECT_FALSE(files.write(file, "more"));
    EXPECT_FALSE(files.add("/b", "x"));
    EXPECT_EQ(files.commit().shownDetail(), "disk full");
    EXPECT_TRUE(system.files.empty());
}

TEST(OutputFiles, OnePlaceIsWrittenOnce) {
    MemoryFileSystem system;
    system.links = {{"/docs/link", "/docs/a"}};
    OutputFiles files;
    ASSERT_TRUE(files.add("/docs/a", "1"));
    EXPECT_EQ(files.add("/docs/link", "2").shownDetail(), "it is written twice");
    EXPECT_FALSE(files.commit());
    EXPECT_TRUE(system.files.empty());
}

}  // namespace
}  // namespace vexa::frontend
