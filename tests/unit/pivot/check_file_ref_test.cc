#include "backend/pivot/check_file_ref.h"

#include <gtest/gtest.h>

#include "backend/paths/file_specification.h"

namespace vexa {
namespace {

class CheckFileRefTest : public ::testing::Test {
  protected:
    CheckFileRefTest() {
        FileLocations::current().setHandle("out", "C:\\reports");
        EXPECT_TRUE(FileLocations::current().changeFolder("/"));
    }
    ~CheckFileRefTest() override { FileLocations::current().reset(); }
    CheckFileRefTest(const CheckFileRefTest&) = delete;
    CheckFileRefTest& operator=(const CheckFileRefTest&) = delete;
};

TEST_F(CheckFileRefTest, ResolvesHandlesAndRelativeNames) {
    EXPECT_EQ(CheckFileRef("OUT/march.doc", true, true), "C:\\reports\\march.doc");
    EXPECT_EQ(CheckFileRef("a/../march.doc", true, true), "\\march.doc");
    EXPECT_EQ(CheckFileRef("d:/march.doc", true, true), "d:\\march.doc");
    EXPECT_EQ(CheckFileRef("", true, true), "");
}

TEST_F(CheckFileRefTest, LeavesTheReferenceAloneUnlessToldToResolve) {
    EXPECT_EQ(CheckFileRef("out\\march.doc", false, true), "out\\march.doc");
}

TEST_F(CheckFileRefTest, DropsSeparatorsAtTheEndOfAFileOnly) {
    EXPECT_EQ(CheckFileRef("c:\\a\\", true, true), "c:\\a");
    EXPECT_EQ(CheckFileRef("c:\\a\\", true, false), "c:\\a\\");
}

}  // namespace
}  // namespace vexa
