#include <gtest/gtest.h>

#include "backend/platform/dynamic_library.h"
#include "backend/platform/file_system.h"

namespace vexa {
namespace {

TEST(LibraryOfWindows, IsFoundUnderEveryFormOfItsPath) {
    const std::string canonical = FileSystem::current().canonicalPath(VEXA_MODULE_FILE);
    for (const std::string& path :
         {std::string(VEXA_MODULE_FILE), toNativePath(VEXA_MODULE_FILE), canonical}) {
        FileResult result{false, "from before"};
        const auto library = DynamicLibrary::load(path, result);
        ASSERT_NE(library, nullptr) << path << ": " << result.reason;
        EXPECT_TRUE(result);
        EXPECT_NE(library->find("STBPRINT"), nullptr);
        EXPECT_EQ(library->find("DllMain"), nullptr) << "is no entry";
    }
}

TEST(LibraryOfWindows, SaysWhyItIsNotLoaded) {
    for (const char* path : {"\\no\\such\\library.dll", "vexaoutput.dll", ""}) {
        FileResult result;
        EXPECT_EQ(DynamicLibrary::load(path, result), nullptr) << path;
        EXPECT_FALSE(result) << path;
        EXPECT_NE(result.reason, "") << path;
    }
}

TEST(ProgramFolderOfWindows, IsWhereTheModuleStandsToo) {
    EXPECT_EQ(programFolder() + "\\vexaoutput.dll", FileSystem::current().canonicalPath(VEXA_MODULE_FILE));
}

}  // namespace
}  // namespace vexa
