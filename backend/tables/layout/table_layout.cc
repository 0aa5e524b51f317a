#include <utility>

#include "backend/tables/layout/footnote_letters.h"
#include "backend/tables/layout/grid_maker.h"
#include "backend/tables/layout/prepared_table.h"
#include "backend/tables/layout/table_grid.h"

namespace vexa::tables {

TableLayout::TableLayout(Table table, const LayoutOptions& options)
    : prepared_(std::make_unique<const PreparedTable>(std::move(table), options)),
      letters_(std::make_unique<FootnoteLetters>(prepared_->data().footnotes().size())) {}

TableLayout::TableLayout(TableLayout&&) noexcept = default;
TableLayout& TableLayout::operator=(TableLayout&&) noexcept = default;
TableLayout::~TableLayout() = default;

TableGrid TableLayout::grid(Place layer) {
    if (!prepared_->options.lettersGoOn) *letters_ = FootnoteLetters(prepared_->data().footnotes().size());
    const bool isFirst = std::exchange(isFirst_, false);
    return GridMaker(*prepared_, *letters_, isFirst).make(layer);
}

bool TableLayout::fits() const { return !prepared_->hasCut; }

std::uint64_t TableLayout::places() const { return prepared_->places; }

std::uint64_t TableLayout::mostPlaces() const { return prepared_->mostPlaces; }

std::size_t TableLayout::rows() const { return std::size_t{prepared_->headerRows} + prepared_->bodyRows; }

std::size_t TableLayout::columns() const {
    return std::size_t{prepared_->labelColumns} + prepared_->dataColumns;
}

bool fitsGrid(const Table& table) { return TableLayout(table).fits(); }

TableGrid layOut(const Table& table, Place layer, const LayoutOptions& options) {
    return TableLayout(table, options).grid(layer);
}

TableGrid layOut(const Table& table, const LayoutOptions& options) {
    return layOut(table, layersOf(table, LayerChoice::shown).front(), options);
}

}  // namespace vexa::tables
