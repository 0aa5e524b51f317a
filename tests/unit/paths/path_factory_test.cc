#include "backend/paths/path_factory.h"

#include <gtest/gtest.h>

#include "tests/unit/text/installed_character_set.h"

namespace vexa {
namespace {

class PathFactoryTest : public ::testing::Test {
  protected:
    ~PathFactoryTest() override { installPaths("", ""); }
};

TEST_F(PathFactoryTest, PathsEndInABackslash) {
    for (const char* folder : {"/opt/vexa", "/opt/vexa/", "\\opt\\vexa", "\\opt\\vexa\\"}) {
        installPaths(folder, "en");
        EXPECT_EQ(PathFactory::getPathInstance(0)->getPath(), "\\opt\\vexa\\") << folder;
        EXPECT_EQ(PathFactory::getPathInstance(3)->getPath(), "\\opt\\vexa\\lang\\en\\") << folder;
    }
}

TEST_F(PathFactoryTest, ThereAreNoOtherInstances) {
    for (const int instance : {-1, 1, 2, 4}) EXPECT_EQ(PathFactory::getPathInstance(instance), nullptr);
}

TEST_F(PathFactoryTest, PathsAreEmptyBeforeTheyAreInstalled) {
    EXPECT_EQ(PathFactory::getPathInstance(0)->getPath(), "");
    EXPECT_EQ(PathFactory::getPathInstance(3)->getPath(), "");
}

TEST_F(PathFactoryTest, PathsAreInTheBackEndsCharacterSet) {
    installPaths("/opt/\u00e4", "de");
    const InstalledCharacterSet installed("windows-1252");
    EXPECT_EQ(PathFactory::getPathInstance(3)->getPath(), "\\opt\\\xE4\\lang\\de\\");
}

}  // namespace
}  // namespace vexa
