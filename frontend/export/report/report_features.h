// What REPORT shows of a document.
#pragma once

#include "frontend/export/format_features.h"

namespace vexa::frontend {

inline constexpr std::string_view ownLooksAlone = "with `RESTYLE=NO`";

inline constexpr FormatFeatures reportFeatures{
    "REPORT", "formats/report.md",
    featureFates({
        {Feature::fonts, Fate::dropped, ownLooksAlone},
        {Feature::fontSizes, Fate::dropped, ownLooksAlone},
        {Feature::textColors, Fate::dropped, ownLooksAlone},
        {Feature::backgrounds, Fate::dropped, ownLooksAlone},
        {Feature::emphasis, Fate::kept, {}},
        {Feature::alignment, Fate::kept, {}},
        {Feature::borders, Fate::dropped, ownLooksAlone},
        {Feature::rowBands, Fate::dropped, ownLooksAlone},
        {Feature::columnWidths, Fate::kept, {}},
        {Feature::spans, Fate::kept, {}},
        {Feature::numbers, Fate::changed, "as text"},
        {Feature::numberFormats, Fate::kept, {}},
        {Feature::footnotes, Fate::kept, "links both ways"},
        {Feature::captions, Fate::kept, {}},
        {Feature::layers, Fate::kept, "one below the other"},
        {Feature::headings, Fate::kept, "by depth, and in the outline"},
        {Feature::pageTitles, Fate::kept, "in their place"},
        {Feature::pageBreaks, Fate::kept, "in print"},
        {Feature::pictures, Fate::kept, "in the page, in the file, or beside it"},
        {Feature::vectorPictures, Fate::kept, "in the page; as bitmaps beside it"},
        {Feature::pictureSizes, Fate::kept, {}},
        {Feature::alternativeTexts, Fate::kept, {}},
        {Feature::documentName, Fate::kept, "title"},
        {Feature::documentLanguage, Fate::kept, "`lang`"},
        {Feature::unknownItems, Fate::warned, "label, with a warning"},
    })};

}  // namespace vexa::frontend
