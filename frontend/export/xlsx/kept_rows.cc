#include "frontend/export/xlsx/kept_rows.h"

#include <algorithm>

namespace vexa::frontend {
namespace {

using Mark = std::vector<RowMark>::const_iterator;

/// The blocks between the rows of two marks.
void addBetween(Mark begin, Mark end, std::string_view packed, std::vector<KeptRows>& kept) {
    const auto from = std::find_if(
        begin, end, [begin](const RowMark& mark) { return mark.packed.bytes >= begin->at + packedWindow; });
    if (from != end && !end->packed.window.empty()) {
        kept.push_back({&*begin, &*end, {packed, &from->packed, &end->packed}});
    }
}

}  // namespace

std::vector<KeptRows> keptRows(const SheetSurvey& survey, std::string_view packed, std::uint32_t touched,
                               std::uint32_t behind) {
    std::vector<KeptRows> kept;
    const auto first = survey.marks.begin();
    const auto last = survey.marks.end();
    // The mark of the row itself ends what is kept before it.
    const auto atTouched =
        std::partition_point(first, last, [touched](const RowMark& mark) { return mark.row <= touched; });
    if (atTouched != first) {
        addBetween(first, atTouched - 1, packed, kept);
    }
    const auto atBehind =
        std::partition_point(first, last, [behind](const RowMark& mark) { return mark.row < behind; });
    if (last - atBehind > 1) {
        addBetween(atBehind, last - 1, packed, kept);
    }
    return kept;
}

}  // namespace vexa::frontend
