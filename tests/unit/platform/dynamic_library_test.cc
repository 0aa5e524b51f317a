#include "backend/platform/dynamic_library.h"

#include <gtest/gtest.h>

#include "backend/platform/file_system.h"
#include "backend/strings/dictionary.h"

namespace vexa {
namespace {

TEST(DynamicLibrary, FindsWhatALibraryExports) {
    FileResult result{false, "from before"};
    const auto library = DynamicLibrary::load(VEXA_SAMPLE_LIBRARY, result);
    ASSERT_NE(library, nullptr) << result.reason;
    EXPECT_TRUE(result);
    EXPECT_EQ(result.reason, "");
    const DynamicLibrary::Entry entry = library->find("sampleEntry");
    ASSERT_NE(entry, nullptr);
    entry();
    EXPECT_EQ(library->find("noSuchEntry"), nullptr);
}

TEST(DynamicLibrary, TakesPathsWithBackslashes) {
    FileResult result;
    EXPECT_NE(DynamicLibrary::load(toBackslashPath(VEXA_SAMPLE_LIBRARY), result), nullptr) << result.reason;
}

TEST(DynamicLibrary, SaysWhyNothingIsLoaded) {
    for (const char* path : {"/no/such/library.so", "library.so", ""}) {
        FileResult result;
        EXPECT_EQ(DynamicLibrary::load(path, result), nullptr) << path;
        EXPECT_FALSE(result) << path;
        EXPECT_NE(result.reason, "") << path;
    }
    FileResult result;
    static_cast<void>(DynamicLibrary::load("library.so", result));
    EXPECT_EQ(shownReason(result), "a library is named by its full path, not by 'library.so'");
}

TEST(ProgramFolder, IsTheFolderOfThisTest) { EXPECT_EQ(programFolder(), VEXA_TEST_FOLDER); }

}  // namespace
}  // namespace vexa
