// What XLS shows of a document.
#pragma once

#include "frontend/export/format_features.h"

namespace vexa::frontend {

inline constexpr FormatFeatures xlsFeatures{
    "XLS", "formats/xls.md",
    featureFates({
        {Feature::fonts, Fate::kept, {}},
        {Feature::fontSizes, Fate::kept, "1 to 409 points; of others the nearest, with a warning"},
        {Feature::textColors, Fate::kept, "56 in all"},
        {Feature::backgrounds, Fate::kept, "56 in all"},
        {Feature::emphasis, Fate::kept, {}},
        {Feature::alignment, Fate::kept, {}},
        {Feature::borders, Fate::kept, {}},
        {Feature::rowBands, Fate::kept, {}},
        {Feature::columnWidths, Fate::kept, {}},
        {Feature::spans, Fate::kept, "merged cells"},
        {Feature::numbers, Fate::kept, {}},
        {Feature::numberFormats, Fate::kept, {}},
        {Feature::footnotes, Fate::kept, "with their marks"},
        {Feature::captions, Fate::kept, {}},
        {Feature::layers, Fate::kept, "one below the other"},
        {Feature::headings, Fate::dropped, {}},
        {Feature::pageTitles, Fate::kept, "in their place"},
        {Feature::pageBreaks, Fate::kept, {}},
        {Feature::pictures, Fate::kept, {}},
        {Feature::vectorPictures, Fate::changed, "as bitmaps"},
        {Feature::pictureSizes, Fate::kept, {}},
        {Feature::alternativeTexts, Fate::kept, {}},
        {Feature::documentName, Fate::kept, "title"},
        {Feature::documentLanguage, Fate::dropped, {}},
        {Feature::unknownItems, Fate::warned, "label, with a warning"},
    })};

}  // namespace vexa::frontend
