
#include <gtest/gtest.h>

#include <map>
#include <ostream>

#include "backend/paths/file_specification.h"
#include "backend/platform/file_system.h"
#include "tests/unit/text/installed_character_set.h"

namespace vexa {
namespace {

using std::string;

/// Folders, files and what may be written, by their UTF-8 paths with backslashes.
class SmallDisk final : public FileSystem {
  public:
    std::map<string, bool> files = {{"\\data\\open.doc", true}, {"\\data\\locked.doc", false}};

    FileResult read(const string&, string&, std::uint64_t) override { return {false, "none"}; }
    FileResult readStream(const string&, string&, std::uint64_t) override { return {false, "none"}; }
    bool isFile(const string& path) override { return files.count(path) != 0; }
    bool isFolder(const string& path) override {
        return path == "\\" || path == "\\data" || path == "\\data\\" || path == "\\read only\\" ||
               path == "C:\\\u8868\\";
    }
    bool isWritable(const string& path) override {
        const auto file = files.find(path);
        return file == files.end() ? path.rfind("\\read only\\", 0) != 0 : file->second;
    }
    string workingFolder() override { return "\\data"; }
    string canonicalPath(const string& path) override { return path; }
    FileResult createTemporary(const string&, string&) override { return {false, "none"}; }
    FileResult append(const string&, std::string_view) override { return {false, "none"}; }
    FileResult flush(const string&) override { return {false, "none"}; }
    FileResult replace(const string&, const string&) override { return {false, "none"}; }
    FileResult remove(const string&) override { return {false, "none"}; }
};

struct PathCase {
    string path;
    int valid, exists, writable;

    friend std::ostream& operator<<(std::ostream& out, const PathCase& c) {
        return out << '"' << c.path << '"';
    }
};

class ClientFile : public ::testing::TestWithParam<PathCase> {
  protected:
    ClientFile() { FileSystem::install(&disk_); }
    ~ClientFile() override { FileSystem::install(nullptr); }
    ClientFile(const ClientFile&) = delete;
    ClientFile& operator=(const ClientFile&) = delete;

    SmallDisk disk_;
};

TEST_P(ClientFile, IsLookedUp) {
    int length = -1;
    int valid = -1;
    int exists = -1;
    int writable = -1;
    const int result = VALIDATECLIENTFILESPEC(GetParam().path.c_str(), &length, &valid, &exists, &writable);
    EXPECT_EQ(length, static_cast<int>(GetParam().path.size()));
    EXPECT_EQ(valid, GetParam().valid);
    EXPECT_EQ(exists, GetParam().exists);
    EXPECT_EQ(writable, GetParam().writable);
    EXPECT_EQ(result == 0, GetParam().valid != 0 && GetParam().writable != 0);
}

INSTANTIATE_TEST_SUITE_P(
    Paths, ClientFile,
    ::testing::Values(PathCase{"\\data\\new.doc", 1, 0, 1}, PathCase{"\\data\\open.doc", 1, 1, 1},
                      PathCase{"\\data\\locked.doc", 1, 1, 0}, PathCase{"\\read only\\new.doc", 1, 0, 0},
                      PathCase{"\\nowhere\\new.doc", 0, 0, 0}, PathCase{"\\data", 0, 0, 0},
                      PathCase{"\\data\\", 0, 0, 0}, PathCase{"\\", 0, 0, 0}, PathCase{"", 0, 0, 0},
                      PathCase{"\\new.doc", 1, 0, 1}, PathCase{"new.doc", 1, 0, 1}));

TEST(FinalSeparators, AreDropped) {
    EXPECT_EQ(withoutFinalSeparators("\\a\\b"), "\\a\\b");
    EXPECT_EQ(withoutFinalSeparators("\\a\\b\\"), "\\a\\b");
    EXPECT_EQ(withoutFinalSeparators("\\a\\b\\\\"), "\\a\\b");
    EXPECT_EQ(withoutFinalSeparators("\\"), "\\");
    EXPECT_EQ(withoutFinalSeparators(""), "");
    EXPECT_EQ(withoutFinalSeparators("a"), "a");
}

TEST(FinalSeparators, AreNoTrailBytes) {
    const InstalledCharacterSet installed("Shift_JIS");
    EXPECT_EQ(withoutFinalSeparators("a\\\x95\x5c"), "a\\\x95\x5c");
    EXPECT_EQ(withoutFinalSeparators("a\\\x95\x5c\\"), "a\\\x95\x5c");
}

}  // namespace
}  // namespace vexa
