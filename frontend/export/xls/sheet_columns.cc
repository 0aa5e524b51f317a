#include "frontend/export/xls/sheet_columns.h"

#include <algorithm>
#include <cmath>

namespace vexa::frontend::biff {

namespace {

constexpr double partsOfDigit = 256;
constexpr double pointsOfDot = 0.75;
constexpr std::uint16_t columnIsHidden = 1;
constexpr std::uint16_t isSet = 2;
/// Of 255 digits, which is the widest column.
constexpr double widest = 255 * partsOfDigit;
/// Dots beside the digits of a column whose width is said in digits.
constexpr double paddingDots = 5;

}  // namespace

void SheetColumns::read(const RecordView& record) {
    const std::string_view content = record.content();
    if (record.id == id::defColWidth && !defaultIsWhole_) {
        defaultWidth_ = twoAt(content, 0);
    } else if (record.id == id::dxGCol) {
        defaultWidth_ = twoAt(content, 0) / partsOfDigit;
        defaultIsWhole_ = true;
    } else if (record.id == id::colInfo) {
        const std::size_t last = std::min<std::size_t>(twoAt(content, 2), columnCount - 1);
        for (std::size_t column = twoAt(content, 0); column <= last; ++column) {
            columns_[column] = {twoAt(content, 4), twoAt(content, 6), twoAt(content, 8), twoAt(content, 10)};
        }
    }
}

double SheetColumns::pointsOf(double width) const {
    return std::floor(width / partsOfDigit * digitWidth_ + 0.5) * pointsOfDot;
}

double SheetColumns::points(std::size_t column) const {
    if (columns_[column]) {
        return (columns_[column]->flags & columnIsHidden) != 0 ? 0 : pointsOf(columns_[column]->width);
    }
    if (defaultIsWhole_) return pointsOf(defaultWidth_ * partsOfDigit);
    // Columns are as many dots wide as can be divided by eight.
    const double dots = defaultWidth_ * digitWidth_ + paddingDots;
    return std::ceil(dots / 8) * 8 * pointsOfDot;
}

void SheetColumns::widen(std::size_t column, double points, bool keeps) {
    const double width = std::min(points / pointsOfDot / digitWidth_ * partsOfDigit, widest);
    if (columns_[column] && (columns_[column]->flags & columnIsHidden) != 0) return;
    if (keeps && this->points(column) >= pointsOf(width)) return;
    if (!columns_[column]) columns_[column] = Column{};
    columns_[column]->width = static_cast<std::uint16_t>(std::lround(width));
    columns_[column]->flags |= isSet;
    changed_ = true;
}

void SheetColumns::append(std::string& out) const {
    for (std::size_t first = 0; first < columnCount; ++first) {
        if (!columns_[first]) continue;
        std::size_t last = first;
        while (last + 1 < columnCount && columns_[last + 1] == columns_[first]) ++last;
        const Column& column = *columns_[first];
        Records records(out);
        records.begin(id::colInfo)
            .two(static_cast<std::uint32_t>(first))
            .two(static_cast<std::uint32_t>(last));
        records.two(column.width).two(column.format).two(column.flags).two(column.reserved).end();
        first = last;
    }
}

}  // namespace vexa::frontend::biff
