#include "backend/commonblocks/common_blocks.h"

#include <array>
#include <cstddef>

namespace vexa {

namespace {

constexpr std::size_t kBlockSize = 256;

std::vector<std::string>& calls() {
    static std::vector<std::string> names;
    return names;
}

/// One block of its own for every number; zeroed, and in the same place as long as the process lives.
template <int number>
void* block(const char* accessor) {
    alignas(std::max_align_t) static std::array<std::byte, kBlockSize> bytes{};
    calls().emplace_back(accessor);
    return bytes.data();
}

}  // namespace

void* pvGetCmnBpr() { return block<0>("pvGetCmnBpr"); }
void* pvGetCmaDic() { return block<1>("pvGetCmaDic"); }
void* pvGetCmaGlb() { return block<2>("pvGetCmaGlb"); }
void* pvGetCmaMch() { return block<3>("pvGetCmaMch"); }
void* pvGetCmaObv() { return block<4>("pvGetCmaObv"); }
void* pvGetCmaSym() { return block<5>("pvGetCmaSym"); }
void* pvGetCmaSys() { return block<6>("pvGetCmaSys"); }
void* pvGetCmnDic() { return block<7>("pvGetCmnDic"); }
void* pvGetCmnDmo() { return block<8>("pvGetCmnDmo"); }
void* pvGetCmnGlb() { return block<9>("pvGetCmnGlb"); }
void* pvGetCmnInc() { return block<10>("pvGetCmnInc"); }
void* pvGetCmnIo() { return block<11>("pvGetCmnIo"); }
void* pvGetCmnLoc() { return block<12>("pvGetCmnLoc"); }
void* pvGetCmnMch() { return block<13>("pvGetCmnMch"); }
void* pvGetCmnMcs() { return block<14>("pvGetCmnMcs"); }
void* pvGetCmnObv() { return block<15>("pvGetCmnObv"); }
void* pvGetCmnStk() { return block<16>("pvGetCmnStk"); }
void* pvGetCmnSym() { return block<17>("pvGetCmnSym"); }
void* pvGetCmnSys() { return block<18>("pvGetCmnSys"); }
void* pvGetCmnWrk() { return block<19>("pvGetCmnWrk"); }
void* pvGetCmnDtm() { return block<20>("pvGetCmnDtm"); }
void* pvGetCmnBox() { return block<21>("pvGetCmnBox"); }

const std::vector<std::string>& commonBlockCalls() { return calls(); }

}  // namespace vexa
