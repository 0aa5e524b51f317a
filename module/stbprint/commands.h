// The command of this folder; its entry function calls it.
#pragma once

namespace vexa {

void stbPrint();

}  // namespace vexa
