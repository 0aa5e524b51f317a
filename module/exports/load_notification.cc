#include "module/exports/load_notification.h"

#include <array>

#include "backend/commonblocks/common_blocks.h"

namespace vexa {

namespace {

using CommonBlockAccessor = void* (*)();

// The order is fixed. No command reads the blocks; the back end expects every module to attach them all the
// same.
constexpr std::array<CommonBlockAccessor, 22> kAccessors = {
    pvGetCmnBpr, pvGetCmaDic, pvGetCmaGlb, pvGetCmaMch, pvGetCmaObv, pvGetCmaSym, pvGetCmaSys, pvGetCmnDic,
    pvGetCmnDmo, pvGetCmnGlb, pvGetCmnInc, pvGetCmnIo,  pvGetCmnLoc, pvGetCmnMch, pvGetCmnMcs, pvGetCmnObv,
    pvGetCmnStk, pvGetCmnSym, pvGetCmnSys, pvGetCmnWrk, pvGetCmnDtm, pvGetCmnBox,
};

void* ownHandle = nullptr;
std::array<void*, kAccessors.size()> commonBlocks{};

}  // namespace

int notifyModule(void* module, unsigned reason) {
    if (reason == kProcessAttach) {
        ownHandle = module;
        for (std::size_t i = 0; i < kAccessors.size(); ++i) {
            commonBlocks[i] = kAccessors[i]();
        }
    }
    return 1;
}

void* moduleHandle() { return ownHandle; }

}  // namespace vexa
