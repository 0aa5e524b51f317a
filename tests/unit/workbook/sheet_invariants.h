// What holds of every worksheet, whatever it shows.
#pragma once

#include "frontend/export/workbook/sheet_content.h"

namespace vexa::frontend {

/// Fails the test where something of what sheet_content.h promises does not hold.
void expectInvariants(const SheetContent& content, const SheetLimits& limits);

}  // namespace vexa::frontend
