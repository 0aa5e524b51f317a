// The back end's shared common blocks. A module asks for their addresses once, when it is loaded.
#pragma once

#include <string>
#include <vector>

namespace vexa {

void* pvGetCmnBpr();
void* pvGetCmaDic();
void* pvGetCmaGlb();
void* pvGetCmaMch();
void* pvGetCmaObv();
void* pvGetCmaSym();
void* pvGetCmaSys();
void* pvGetCmnDic();
void* pvGetCmnDmo();
void* pvGetCmnGlb();
void* pvGetCmnInc();
void* pvGetCmnIo();
void* pvGetCmnLoc();
void* pvGetCmnMch();
void* pvGetCmnMcs();
void* pvGetCmnObv();
void* pvGetCmnStk();
void* pvGetCmnSym();
void* pvGetCmnSys();
void* pvGetCmnWrk();
void* pvGetCmnDtm();
void* pvGetCmnBox();

/// The names of the accessors called so far in this process, in order; for tests of loading.
[[nodiscard]] const std::vector<std::string>& commonBlockCalls();

}  // namespace vexa
