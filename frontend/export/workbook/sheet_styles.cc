#include "frontend/export/workbook/sheet_styles.h"

#include <algorithm>
#include <utility>

namespace vexa::frontend {

namespace {

using tables::HorizontalAlign;
using tables::ShownStyle;
using tables::ShownStyleId;
using tables::TableGrid;

std::uint32_t packed(const SheetNumber& number) {
    return static_cast<std::uint32_t>(number.format.kind) << 17 |
           static_cast<std::uint32_t>(number.format.width) << 9 |
           static_cast<std::uint32_t>(number.format.decimals) << 1 | (number.minusIsDropped ? 1U : 0U);
}

/// Whether a format code can show a text: one line without what no workbook can hold.
bool isForCodes(std::string_view text) {
    std::string held;
    appendCellText(held, text);
    return held == text && held.find_first_of("\n\t") == std::string::npos;
}

}  // namespace

std::string sheetFont(std::string_view font) {
    std::string held;
    appendCellText(held, font);
    std::replace_if(
        held.begin(), held.end(), [](char each) { return each == '\n' || each == '\t'; }, ' ');
    return held.empty() || textUnits(held) > longestFontName ? "sans-serif" : held;
}

double sheetFontSize(double size) { return std::clamp(size, smallestFont, largestFont); }

std::optional<CodeId> SheetCodes::of(const SheetNumber& number) {
    const auto [found, isNew] = byFormat_.try_emplace(packed(number));
    if (isNew) found->second = intern(formatCode(number.format, number.minusIsDropped), mostFormatCodes);
    return found->second;
}

std::optional<CodeId> SheetCodes::of(const SheetNumber& number, std::string_view marks,
                                     std::optional<std::string_view> shown) {
    if (!shown && marks.empty()) return of(number);
    if (shown && !isForCodes(*shown)) return std::nullopt;
    std::string code = shown ? literalCode(std::string(*shown).append(marks))
                             : codeWithSuffix(formatCode(number.format, number.minusIsDropped), marks);
    if (code.size() > longestFormatCode) return std::nullopt;
    return intern(std::move(code), mostFormatTexts);
}

std::optional<CodeId> SheetCodes::intern(std::string code, std::size_t most) {
    const auto found = ids_.find(code);
    if (found != ids_.end()) return found->second;
    if (codes_.size() > most) return std::nullopt;
    const auto id = static_cast<CodeId>(codes_.size());
    codes_.push_back(code);
    ids_.emplace(std::move(code), id);
    return id;
}

void SheetStyles::begin(const TableGrid& grid) {
    grid_ = &grid;
    known_.fill({});
    fonts_.assign(grid.styles.size(), std::nullopt);
}

const FontWidths& SheetStyles::font(ShownStyleId shown) {
    std::optional<FontWidths>& font = fonts_[shown];
    if (!font) {
        const tables::AreaLook& look = grid_->styles[shown].look;
        font.emplace(look.font, look.size, look.bold);
    }
    return *font;
}

SheetStyleId SheetStyles::of(ShownStyleId shown, RangeSides sides, SheetWording wording, CodeId code) {
    const std::uint64_t key = static_cast<std::uint64_t>(shown) << 32 |
                              static_cast<std::uint64_t>(code) << 8 |
                              static_cast<std::uint64_t>(wording) << 4 | sides;
    constexpr std::uint64_t spreading = 0x9E3779B97F4A7C15U;
    Known& known = known_[(key * spreading) >> 57];
    if (known.key != key) known = {key, draft_.intern(make(shown, sides, wording, code))};
    return known.id;
}

SheetStyle SheetStyles::make(ShownStyleId shown, RangeSides sides, SheetWording wording, CodeId code) const {
    const ShownStyle& given = grid_->styles[shown];
    SheetStyle style;
    style.font = sheetFont(given.look.font);
    style.size = sheetFontSize(given.look.size);
    style.bold = given.look.bold;
    style.italic = given.look.italic;
    style.underline = given.look.underline;
    style.color = given.look.color;
    style.background = given.look.background;
    style.horizontal = given.look.horizontal;
    style.vertical = given.look.vertical;
    style.wraps = wording == SheetWording::text;
    if (wording == SheetWording::insteadOf && style.horizontal == HorizontalAlign::mixed) {
        style.horizontal = HorizontalAlign::right;
    }
    for (std::size_t side = 0; side < style.borders.size(); ++side) {
        if ((sides >> side & 1U) != 0) style.borders[side] = given.borders[side];
    }
    style.numberFormat = codes_.text(code);
    return style;
}

}  // namespace vexa::frontend
