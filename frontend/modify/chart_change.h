// Changes of charts and trees: templates and style sheets, which are applied when the picture is shown.
#pragma once

#include <string>

#include "frontend/document/outline.h"
#include "frontend/modify/change_notes.h"
#include "frontend/requests/modify_request.h"

namespace vexa::frontend {

/// Why a template cannot be applied, as shown; empty for one that can.
[[nodiscard]] std::string templateProblem(const std::string& text);

/// The templates of the change take the place of those that the picture has, and so does the style sheet.
/// Other items stay as they are. A style sheet that no folder `Looks` has is set all the same, since
/// documents travel, and reported.
void changeChart(Outline& outline, ItemId id, const GraphChange& change, bool hasStyleSheet, ItemPlan& plan);

}  // namespace vexa::frontend
