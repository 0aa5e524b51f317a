// What stands behind the general names of fonts.
#pragma once

namespace vexa::frontend {

/// From now on `sans-serif` and `serif` are the fonts that texts for word processors and workbooks name, or
/// those made as wide as these, where one is installed: what is drawn looks like what is written there, and
/// lines are as long. Without one they stay what the system says. To be called before anything is drawn;
/// again, it does nothing. Not in several threads at once.
void settleGeneralFonts();

}  // namespace vexa::frontend
