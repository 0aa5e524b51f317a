// What TEXT shows of a document.
#pragma once

#include "frontend/export/format_features.h"

namespace vexa::frontend {

inline constexpr std::string_view warnedOfTheDocumentsOwn = "no, warned of where the document sets them";

inline constexpr FormatFeatures textFeatures{
    "TEXT", "formats/text.md",
    featureFates({
        {Feature::fonts, Fate::warned, warnedOfTheDocumentsOwn},
        {Feature::fontSizes, Fate::warned, warnedOfTheDocumentsOwn},
        {Feature::textColors, Fate::warned, warnedOfTheDocumentsOwn},
        {Feature::backgrounds, Fate::warned, warnedOfTheDocumentsOwn},
        {Feature::emphasis, Fate::warned, "no, warned of where the document sets it"},
        {Feature::alignment, Fate::dropped, "numbers right, texts left"},
        {Feature::borders, Fate::dropped, "its own"},
        {Feature::rowBands, Fate::dropped, {}},
        {Feature::columnWidths, Fate::warned, {}},
        {Feature::spans, Fate::kept, {}},
        {Feature::numbers, Fate::changed, "as text"},
        {Feature::numberFormats, Fate::kept, {}},
        {Feature::footnotes, Fate::kept, "with their marks"},
        {Feature::captions, Fate::kept, {}},
        {Feature::layers, Fate::kept, "one below the other"},
        {Feature::headings, Fate::dropped, {}},
        {Feature::pageTitles, Fate::kept, "in their place"},
        {Feature::pageBreaks, Fate::warned, {}},
        {Feature::pictures, Fate::warned, "beside it, else the alternative text with a warning"},
        {Feature::vectorPictures, Fate::dropped, "as bitmaps beside it"},
        {Feature::pictureSizes, Fate::dropped, "of files beside it"},
        {Feature::alternativeTexts, Fate::kept, {}},
        {Feature::documentName, Fate::dropped, {}},
        {Feature::documentLanguage, Fate::dropped, {}},
        {Feature::unknownItems, Fate::warned, "label, with a warning"},
    })};

}  // namespace vexa::frontend
