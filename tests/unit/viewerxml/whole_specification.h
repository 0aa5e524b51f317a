// A specification with every setting of every format.
#pragma once

#include "backend/viewerxml/export_spec.h"

namespace vexa::testing {

/// Calls every setter once, in an order that is not the order of the attributes, and marks every format
/// present.
void setEverything(ExportSpec& spec);

/// The XML that must come of it.
extern const char* const kEverything;

}  // namespace vexa::testing
