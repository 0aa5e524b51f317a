// What DOC shows of a document, in either form.
#pragma once

#include "frontend/export/format_features.h"

namespace vexa::frontend {

inline constexpr std::array<FeatureFate, featureCount> wordFates = featureFates({
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
    {Feature::footnotes, Fate::kept, "under the table, with raised marks"},
    {Feature::captions, Fate::kept, {}},
    {Feature::layers, Fate::kept, "one below the other"},
    {Feature::headings, Fate::kept, "by depth, and in the contents"},
    {Feature::pageTitles, Fate::kept, "in the head of the pages"},
    {Feature::pageBreaks, Fate::kept, {}},
    {Feature::pictures, Fate::kept, "in the file"},
    {Feature::vectorPictures, Fate::kept, "as SVG beside a bitmap"},
    {Feature::pictureSizes, Fate::kept, "shrunk to the page"},
    {Feature::alternativeTexts, Fate::kept, {}},
    {Feature::documentName, Fate::kept, "title"},
    {Feature::documentLanguage, Fate::kept, {}},
    {Feature::unknownItems, Fate::warned, "label, with a warning"},
});

/// The same but for drawings.
consteval std::array<FeatureFate, featureCount> richTextFates() {
    std::array<FeatureFate, featureCount> fates = wordFates;
    fates[static_cast<std::size_t>(Feature::vectorPictures)] = {Feature::vectorPictures, Fate::changed,
                                                                "as bitmaps"};
    return fates;
}

inline constexpr FormatFeatures wordFeatures{"DOC", "formats/doc.md", wordFates};
inline constexpr FormatFeatures richTextFeatures{"RTF", "formats/doc.md", richTextFates()};

}  // namespace vexa::frontend
