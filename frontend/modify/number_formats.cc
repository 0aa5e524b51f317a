#include "frontend/modify/number_formats.h"

#include <optional>

namespace vexa::frontend {

namespace {

using tables::DisplayFormat;
using tables::FormatKind;
using tables::Place;
using tables::TableCell;
using tables::TableData;
using tables::TableDataBuilder;

bool hasOwnText(const TableData& data, const TableCell& cell) {
    return cell.kind == tables::CellKind::number && cell.extras != 0 && data.extras(cell).shown.has_value();
}

}  // namespace

bool NumberFormats::isShownIn(DisplayFormat format, Place place, const TableCell& cell) const {
    if (hasOwnText(data_, cell)) return false;
    DisplayFormat present = style_.cellFormats().isEmpty() ? DisplayFormat{} : style_.cellFormat(place);
    if (present.kind == FormatKind::none) present = style_.format();
    if (present.kind == FormatKind::none) present = data_.formatOf(place, cell, order_);
    return present == format;
}

std::shared_ptr<const TableData> withoutOwnTexts(const std::shared_ptr<const TableData>& data,
                                                 const std::vector<Place>& places) {
    std::optional<TableDataBuilder> builder;
    for (const Place place : places) {
        const TableCell* const cell = data->find(place);
        if (cell == nullptr || !hasOwnText(*data, *cell)) continue;
        if (!builder) builder.emplace(*data);
        builder->setShown(place, std::nullopt);
    }
    return builder ? builder->finish() : data;
}

std::shared_ptr<const TableData> withoutOwnTexts(const std::shared_ptr<const TableData>& data) {
    std::vector<Place> places;
    data->forEachCell([&](Place place, const TableCell& cell) {
        if (hasOwnText(*data, cell)) places.push_back(place);
    });
    return places.empty() ? data : withoutOwnTexts(data, places);
}

}  // namespace vexa::frontend
