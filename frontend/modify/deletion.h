// Takes selected items out of an outline.
#pragma once

#include <vector>

#include "frontend/document/outline.h"
#include "frontend/modify/selection.h"

namespace vexa::frontend {

/// Removes the items and what stands under them. A model goes on showing its view; when that goes, the one
/// behind it is shown, else the one before. A model without views goes too.
void removeItems(Outline& outline, const std::vector<SelectedItem>& items);

}  // namespace vexa::frontend
