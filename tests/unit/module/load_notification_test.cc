#include "module/exports/load_notification.h"

#include <gtest/gtest.h>

#include <thread>

#include "backend/commonblocks/common_blocks.h"
#include "backend/platform/dynamic_library.h"
#include "backend/platform/file_system.h"

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
        FileResult result;
        auto library = DynamicLibrary::load(VEXA_MODULE_FILE, result);
        ASSERT_NE(library, nullptr) << result.reason;
        EXPECT_EQ(callsSince(before), kAccessors);
        auto again = DynamicLibrary::load(VEXA_MODULE_FILE, result);
        EXPECT_EQ(again->find("OUTNEW"), library->find("OUTNEW"));
        EXPECT_EQ(callsSince(before), kAccessors) << "a second reference is no second load";
        std::thread([] {}).join();
        EXPECT_EQ(callsSince(before), kAccessors) << "a thread that begins and ends attaches nothing";
        library.reset();
        again.reset();
        EXPECT_EQ(callsSince(before), kAccessors) << "unloading attaches nothing";
    }
}

}  // namespace
}  // namespace vexa
