// The page of a text document.
#pragma once

#include "frontend/requests/export_request.h"

namespace vexa::frontend {

/// Points throughout.
struct WordPage {
    Extent paper;
    Margins margins;

    [[nodiscard]] double textWidth() const { return paper.width - margins.left - margins.right; }
    [[nodiscard]] double textHeight() const { return paper.height - margins.top - margins.bottom; }
    [[nodiscard]] bool isLandscape() const { return paper.width > paper.height; }
};

/// The page that is asked for, as word processors can take it: at most 22 inches a side, and with room for a
/// text between the margins, which give way where they leave none. `isChanged` says whether it is another one
/// than what was asked for.
[[nodiscard]] WordPage wordPageOf(const DocExport& request, bool& isChanged);

}  // namespace vexa::frontend
