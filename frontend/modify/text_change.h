// Changes of texts, headings and page titles.
#pragma once

#include "frontend/document/outline.h"
#include "frontend/modify/change_notes.h"
#include "frontend/requests/modify_request.h"

namespace vexa::frontend {

/// Replaces the text where one is given, and sets what `style` sets. Other items stay as they are.
void changeText(Outline& outline, ItemId id, const TextChange& change, const tables::CellStyle& style,
                ItemPlan& plan);

}  // namespace vexa::frontend
