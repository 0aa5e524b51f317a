// What slides show of a document.
#pragma once

#include "frontend/export/format_features.h"

namespace vexa::frontend {

inline constexpr FormatFeatures slidesFeatures{
    "PPT", "formats/ppt.md",
    featureFates({
        {Feature::fonts, Fate::kept, {}},
        {Feature::fontSizes, Fate::kept, "those that are set; other tables grow into their slide"},
        {Feature::textColors, Fate::kept, {}},
        {Feature::backgrounds, Fate::kept, {}},
        {Feature::emphasis, Fate::kept, {}},
        {Feature::alignment, Fate::kept, {}},
        {Feature::borders, Fate::kept, {}},
        {Feature::rowBands, Fate::kept, {}},
        {Feature::columnWidths, Fate::kept, {}},
        {Feature::spans, Fate::kept, {}},
        {Feature::numbers, Fate::changed, "as text"},
        {Feature::numberFormats, Fate::kept, {}},
        {Feature::footnotes, Fate::kept, "on the slides that have their marks"},
        {Feature::captions, Fate::kept, "under the table, and on the notes page"},
        {Feature::layers, Fate::kept, "a slide each"},
        {Feature::headings, Fate::dropped, {}},
        {Feature::pageTitles, Fate::kept, "at the foot of the slides"},
        {Feature::pageBreaks, Fate::dropped, "each item has a slide"},
        {Feature::pictures, Fate::kept, {}},
        {Feature::vectorPictures, Fate::kept, "SVG, with a bitmap beside it"},
        {Feature::pictureSizes, Fate::dropped, "as large as they fit"},
        {Feature::alternativeTexts, Fate::kept, {}},
        {Feature::documentName, Fate::kept, "title"},
        {Feature::documentLanguage, Fate::kept, {}},
        {Feature::unknownItems, Fate::warned, "label, with a warning"},
    })};

}  // namespace vexa::frontend
