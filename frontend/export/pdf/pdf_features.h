// What PDF shows of a document.
#pragma once

#include "frontend/export/format_features.h"

namespace vexa::frontend {

inline constexpr FormatFeatures pdfFeatures{
    "PDF", "formats/pdf.md",
    featureFates({
        {Feature::fonts, Fate::kept, "yes, those that are installed"},
        {Feature::fontSizes, Fate::kept, {}},
        {Feature::textColors, Fate::kept, {}},
        {Feature::backgrounds, Fate::kept, {}},
        {Feature::emphasis, Fate::kept, {}},
        {Feature::alignment, Fate::kept, {}},
        {Feature::borders, Fate::kept, {}},
        {Feature::rowBands, Fate::kept, {}},
        {Feature::columnWidths, Fate::kept, "yes, but numbers are never broken"},
        {Feature::spans, Fate::kept, {}},
        {Feature::numbers, Fate::changed, "as text"},
        {Feature::numberFormats, Fate::kept, {}},
        {Feature::footnotes, Fate::kept, "links both ways, on the page that refers to them"},
        {Feature::captions, Fate::kept, {}},
        {Feature::layers, Fate::kept, "one below the other"},
        {Feature::headings, Fate::kept, "by depth, and as bookmarks"},
        {Feature::pageTitles, Fate::kept, "at the top of the pages that begin behind them"},
        {Feature::pageBreaks, Fate::kept, {}},
        {Feature::pictures, Fate::kept, "in the page"},
        {Feature::vectorPictures, Fate::kept, "as vectors"},
        {Feature::pictureSizes, Fate::kept, "yes, as far as a page has room"},
        {Feature::alternativeTexts, Fate::kept, {}},
        {Feature::documentName, Fate::kept, "title"},
        {Feature::documentLanguage, Fate::kept, "`/Lang`"},
        {Feature::unknownItems, Fate::warned, "label, with a warning"},
    })};

}  // namespace vexa::frontend
