// Documents that have one feature alone, for every feature that exports tell apart.
#pragma once

#include <string>

#include "frontend/document/viewer_document.h"
#include "frontend/export/export_report.h"

namespace vexa::frontend {

/// The same document with a feature and without it, or with another one of its kind.
struct FeatureSample {
    ViewerDocument with;
    ViewerDocument without;
    std::string language = "en";  ///< of the document with it; that of the other one is English
};

[[nodiscard]] FeatureSample sampleOf(Feature feature);

}  // namespace vexa::frontend
