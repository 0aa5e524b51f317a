#include "backend/commonblocks/common_blocks.h"

#include <gtest/gtest.h>

#include <set>

namespace vexa {
namespace {

using Accessor = void* (*)();

const struct {
    const char* name;
    Accessor accessor;
} kAccessors[] = {
    {"pvGetCmnBpr", pvGetCmnBpr}, {"pvGetCmaDic", pvGetCmaDic}, {"pvGetCmaGlb", pvGetCmaGlb},
    {"pvGetCmaMch", pvGetCmaMch}, {"pvGetCmaObv", pvGetCmaObv}, {"pvGetCmaSym", pvGetCmaSym},
    {"pvGetCmaSys", pvGetCmaSys}, {"pvGetCmnDic", pvGetCmnDic}, {"pvGetCmnDmo", pvGetCmnDmo},
    {"pvGetCmnGlb", pvGetCmnGlb}, {"pvGetCmnInc", pvGetCmnInc}, {"pvGetCmnIo", pvGetCmnIo},
    {"pvGetCmnLoc", pvGetCmnLoc}, {"pvGetCmnMch", pvGetCmnMch}, {"pvGetCmnMcs", pvGetCmnMcs},
    {"pvGetCmnObv", pvGetCmnObv}, {"pvGetCmnStk", pvGetCmnStk}, {"pvGetCmnSym", pvGetCmnSym},
    {"pvGetCmnSys", pvGetCmnSys}, {"pvGetCmnWrk", pvGetCmnWrk}, {"pvGetCmnDtm", pvGetCmnDtm},
    {"pvGetCmnBox", pvGetCmnBox},
};

TEST(CommonBlocks, EachHasAnAddressOfItsOwnAndItsCallIsRecorded) {
    std::set<void*> blocks;
    const std::size_t before = commonBlockCalls().size();
    for (const auto& one : kAccessors) {
        void* block = one.accessor();
        ASSERT_NE(block, nullptr) << one.name;
        EXPECT_TRUE(blocks.insert(block).second) << one.name;
        EXPECT_EQ(commonBlockCalls().back(), one.name);
    }
    EXPECT_EQ(commonBlockCalls().size(), before + std::size(kAccessors));
}

TEST(CommonBlocks, AnAddressStaysAndTheBlockBeginsZeroed) {
    for (const auto& one : kAccessors) {
        void* block = one.accessor();
        EXPECT_EQ(one.accessor(), block) << one.name;
        EXPECT_EQ(*static_cast<const long*>(block), 0) << one.name;
    }
}

}  // namespace
}  // namespace vexa
