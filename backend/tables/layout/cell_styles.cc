#include "backend/tables/layout/cell_styles.h"

namespace vexa::tables {

namespace {

constexpr unsigned borderBits = 4;
constexpr unsigned areaBits = 3;
static_assert(borderCount < (1U << borderBits) && areaCount <= (1U << areaBits));

void overlay(AreaLook& look, const CellStyle& own) {
    if (!own.font.empty()) look.font = own.font;
    look.size = own.size.value_or(look.size);
    look.bold = own.bold.value_or(look.bold);
    look.italic = own.italic.value_or(look.italic);
    look.underline = own.underline.value_or(look.underline);
    look.color = own.color.value_or(look.color);
    if (own.background) look.background = own.background;
}

}  // namespace

CellStyles::CellStyles(const TableStyle& style, std::vector<ShownStyle>& styles)
    : style_(style), styles_(styles) {
    const TableLook& look = *style_.look();
    sameLine_[noBorder] = noBorder;
    for (std::uint8_t i = 0; i < borderCount; ++i) {
        const BorderLine& line = look.borders[i];
        sameLine_[i] = line.style == LineStyle::none ? noBorder : i;
        for (std::uint8_t k = 0; sameLine_[i] == i && k < i; ++k) {
            if (look.borders[k] == line) sameLine_[i] = k;
        }
    }
}

ShownStyleId CellStyles::find(const Wanted& wanted) {
    const auto& [area, banded, borders, own] = wanted;
    std::uint64_t key = own;
    for (const std::uint8_t border : borders) key = key << borderBits | sameLine_[border];
    key = (key << areaBits | static_cast<std::uint64_t>(area)) << 1U | (banded ? 1U : 0U);
    const auto [found, added] = ids_.try_emplace(key, static_cast<ShownStyleId>(styles_.size()));
    if (added) styles_.push_back(make(area, own, banded, borders));
    return found->second;
}

ShownStyle CellStyles::make(Area area, StyleId own, bool banded, const CellBorders& borders) const {
    const TableLook& look = *style_.look();
    ShownStyle shown;
    shown.look = look.area(area);
    if (banded) {
        if (look.banding.background) shown.look.background = look.banding.background;
        shown.look.color = look.banding.color.value_or(shown.look.color);
    }
    shown.own = style_.style(style_.area(area));
    shown.own.overlay(style_.style(own));
    overlay(shown.look, shown.own);
    for (std::size_t i = 0; i < borders.size(); ++i) {
        if (borders[i] != noBorder) shown.borders[i] = look.borders[borders[i]];
    }
    return shown;
}

}  // namespace vexa::tables
