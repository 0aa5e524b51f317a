#include "backend/platform/dynamic_library.h"

#include <gtest/gtest.h>

#include "backend/platform/file_system.h"

namespace vexa {
namespace {

TEST(DynamicLibrary, FindsWhatALibraryExports) {
    std::string reason = "from before";
    const auto library = DynamicLibrary::load(VEXA_SAMPLE_LIBRARY, reason);
    ASSERT_NE(library, nullptr) << reason;
    EXPECT_EQ(reason, "");
    const DynamicLibrary::Entry entry = library->find("sampleEntry");
    ASSERT_NE(entry, nullptr);
    entry();
    EXPECT_EQ(library->find("noSuchEntry"), nullptr);
}

TEST(DynamicLibrary, TakesPathsWithBackslashes) {
    std::string reason;
    EXPECT_NE(DynamicLibrary::load(toBackslashPath(VEXA_SAMPLE_LIBRARY), reason), nullptr) << reason;
}

TEST(DynamicLibrary, SaysWhyNothingIsLoaded) {
    for (const char* path : {"/no/such/library.so", "library.so", ""}) {
        std::string reason;
        EXPECT_EQ(DynamicLibrary::load(path, reason), nullptr) << path;
        EXPECT_NE(reason, "") << path;
    }
}

TEST(ProgramFolder, IsTheFolderOfThisTest) { EXPECT_EQ(programFolder(), VEXA_TEST_FOLDER); }

}  // namespace
}  // namespace vexa
