// The entry functions: one a command, without arguments and result. The back end calls them by these names
// once it has recognised the command; each fetches the command's tokens itself.

#include "module/document/commands.h"
#include "module/export/commands.h"
#include "module/modify/commands.h"
#include "module/stbprint/commands.h"

extern "C" {

void OUTNEW() { vexa::outputNew(); }
void OUTOPEN() { vexa::outputOpen(); }
void OUTSAVE() { vexa::outputSave(); }
void OUTCLOSE() { vexa::outputClose(); }
void OUTACTIV8() { vexa::outputActivate(); }
void OUTDISP() { vexa::outputDisplay(); }
void OUTNAME() { vexa::outputName(); }
void OUTCOMNT() { vexa::outputComment(); }
void OUTMODIFY() { vexa::outputModify(); }
void OUTEXPORT() { vexa::outputExport(); }
void STBPRINT() { vexa::stbPrint(); }

}  // extern "C"
