// What becomes of each feature of a document in each format: what docs/exports.md shows, and what the tests
// hold the exporters to.
//
// A format has its table in its own folder, in a header like html/html_features.h, and a line in the list of
// format_features.cc. The tests then export documents that have one feature alone, with the defaults of the
// command, and compare: what is `kept` or `changed` makes a difference to the file, what is `dropped` makes
// none, and what is `warned` of is named in a warning. tools/losses writes the table into the document.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>

#include "frontend/export/export_report.h"

namespace vexa::frontend {

enum class Fate : std::uint8_t {
    kept,     ///< shown, without any warning
    changed,  ///< shown in some other way, or as the item's label; nobody is warned
    dropped,  ///< not shown unless an option asks for it; nobody is warned
    warned    ///< not shown as it is, and a warning names the item and the feature
};

struct FeatureFate {
    Feature feature = Feature::fonts;
    Fate fate = Fate::kept;
    /// In the table, Markdown; empty for the usual words: "yes", "no", "no, with a warning".
    std::string_view words;
};

struct FormatFeatures {
    std::string_view format;   ///< as the command calls it, else by its extension: "HTML", "RTF"
    std::string_view details;  ///< the page that says how, as seen from the folder docs
    std::array<FeatureFate, featureCount> fates;  ///< in the order of `Feature`
};

/// All features in their order. What does not name each of them once is not compiled.
template <std::size_t count>
consteval std::array<FeatureFate, featureCount> featureFates(const FeatureFate (&fates)[count]) {
    static_assert(count == featureCount, "each feature has its line");
    std::array<FeatureFate, featureCount> all{};
    for (std::size_t i = 0; i < featureCount; ++i) {
        if (static_cast<std::size_t>(fates[i].feature) != i) throw "features stand in their order";
        all[i] = fates[i];
    }
    return all;
}

/// Every format, in the order of the columns.
[[nodiscard]] std::span<const FormatFeatures* const> formatFeatures();

/// How the table words it.
[[nodiscard]] std::string_view wordsOf(const FeatureFate& fate);

}  // namespace vexa::frontend
