#include "module/stbprint/base_folder.h"

#include <gtest/gtest.h>

#include "tests/unit/text/installed_character_set.h"

namespace vexa {
namespace {

TEST(BaseFolder, IsCutAtTheLastSeparatorAndThenAtTheLastBackslash) {
    const struct {
        const char *path, *base;
    } cases[] = {
        {"c:\\product\\lang\\en\\", "c:\\product\\lang"},
        {"c:\\product\\lang\\en/", "c:\\product\\lang"},
        {"c:\\product\\lang/en\\", "c:\\product"},      // the second cut knows no slash
        {"c:/product/lang/en/", "c:/product/lang/en"},  // and is left out here
        {"c:\\product\\lang\\en", "c:\\product"},
        {"\\en\\", ""},
        {"en\\", "en"},
        {"en", "en"},
        {"", ""},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(baseFolder(one.path), one.base) << one.path;
    }
}

TEST(BaseFolder, IsNotCutWithinACharacter) {
    const InstalledCharacterSet installed("Shift_JIS");
    EXPECT_EQ(baseFolder("c:\\lang\\\x95\\\\"),
              "c:\\lang");  // the last letter ends in the byte of a backslash
}

}  // namespace
}  // namespace vexa
