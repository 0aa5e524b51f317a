// What HTML shows of a document.
#pragma once

#include "frontend/export/format_features.h"

namespace vexa::frontend {

inline constexpr FormatFeatures htmlFeatures{
    "HTML", "formats/html.md",
    featureFates({
        {Feature::fonts, Fate::kept, {}},
        {Feature::fontSizes, Fate::kept, {}},
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
        {Feature::footnotes, Fate::kept, "links both ways"},
        {Feature::captions, Fate::kept, {}},
        {Feature::layers, Fate::kept, "one below the other, or lists"},
        {Feature::headings, Fate::kept, "by depth"},
        {Feature::pageTitles, Fate::kept, "in their place"},
        {Feature::pageBreaks, Fate::kept, "in print"},
        {Feature::pictures, Fate::kept, "in the page, or beside it"},
        {Feature::vectorPictures, Fate::kept, "in the page; as bitmaps beside it"},
        {Feature::pictureSizes, Fate::kept, {}},
        {Feature::alternativeTexts, Fate::kept, {}},
        {Feature::documentName, Fate::kept, "title"},
        {Feature::documentLanguage, Fate::kept, "`lang`"},
        {Feature::unknownItems, Fate::warned, "label, with a warning"},
    })};

}  // namespace vexa::frontend
