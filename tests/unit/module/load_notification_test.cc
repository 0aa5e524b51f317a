#include "module/exports/load_notification.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include "backend/commonblocks/common_blocks.h"

namespace vexa {
namespace {

const std::vector<std::string> kAccessors = {
    "pvGetCmnBpr", "pvGetCmaDic", "pvGetCmaGlb", "pvGetCmaMch", "pvGetCmaObv", "pvGetCmaSym",
    "pvGetCmaSys", "pvGetCmnDic", "pvGetCmnDmo", "pvGetCmnGlb", "pvGetCmnInc", "pvGetCmnIo",
    "pvGetCmnLoc", "pvGetCmnMch", "pvGetCmnMcs", "pvGetCmnObv", "pvGetCmnStk", "pvGetCmnSym",
    "pvGetCmnSys", "pvGetCmnWrk", "pvGetCmnDtm", "pvGetCmnBox",
};

std::vector<std::string> callsSince(std::size_t before) {
    const std::vector<std::string>& calls = commonBlockCalls();
    return {calls.begin() + static_cast<std::ptrdiff_t>(before), calls.end()};
}

TEST(LoadNotification, AttachAsksForEveryBlockOnceInOrder) {
    const std::size_t before = commonBlockCalls().size();
    int module = 0;
    EXPECT_EQ(notifyModule(&module, kProcessAttach), 1);
    EXPECT_EQ(callsSince(before), kAccessors);
    EXPECT_EQ(moduleHandle(), &module);
}

TEST(LoadNotification, OtherReasonsAnswerSuccessAndDoNothing) {
    int module = 0;
    void* const handle = moduleHandle();
    const std::size_t before = commonBlockCalls().size();
    for (const unsigned reason : {0U, 2U, 3U, 77U}) {
        EXPECT_EQ(notifyModule(&module, reason), 1);
    }
    EXPECT_EQ(callsSince(before), std::vector<std::string>());
    EXPECT_EQ(moduleHandle(), handle);
}

TEST(LoadNotification, EveryLoadOfTheLibraryAttachesOnce) {
    for (int round = 0; round < 3; ++round) {
        const std::size_t before = commonBlockCalls().size();
        void* const library = dlopen(VEXA_MODULE_FILE, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(library, nullptr) << dlerror();
        EXPECT_EQ(callsSince(before), kAccessors);
        EXPECT_EQ(dlopen(VEXA_MODULE_FILE, RTLD_NOW | RTLD_LOCAL), library);
        EXPECT_EQ(callsSince(before), kAccessors) << "a second reference is no second load";
        dlclose(library);
        dlclose(library);
        EXPECT_EQ(callsSince(before), kAccessors) << "unloading attaches nothing";
    }
}

}  // namespace
}  // namespace vexa
