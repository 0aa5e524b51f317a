// The handles that commands build a table with; what they say is written into the draft at once.
#include <cassert>
#include <memory>
#include <utility>

#include "backend/pivot/bp_procedure.h"
#include "backend/pivot/output_log.h"
#include "backend/pivot/pivot_table_draft.h"
#include "backend/pivot/shown_table.h"
#include "backend/text/character_set.h"

namespace vexa {

BpCategory::BpCategory(PivotTableDraft& draft, std::size_t dimension, std::size_t category)
    : draft_(&draft), dimension_(dimension), category_(category) {}

BpCategory& BpCategory::Cell(const BpCellText& value) {
    cell_ = draft_->fill(dimension_, category_, value);
    return *this;
}

BpCategory& BpCategory::Note(const BpCellText& note) {
    draft_->extras(cell_).notes.push_back(note.shown());
    return *this;
}

BpCategory& BpCategory::Bold() {
    draft_->extras(cell_).bold = true;
    return *this;
}

BpCategory& BpCategory::Color(std::string_view color) {
    draft_->extras(cell_).color = toUtf8(color);
    return *this;
}

BpCategory& BpCategory::Background(std::string_view color) {
    draft_->extras(cell_).background = toUtf8(color);
    return *this;
}

BpGroup::BpGroup(PivotTableDraft& draft, std::size_t dimension, int group)
    : draft_(&draft), dimension_(dimension), group_(group) {}

BpCategory BpGroup::Category(const BpCellText& label) {
    return {*draft_, dimension_, draft_->category(dimension_, group_, label)};
}

BpGroup BpGroup::Group(const BpCellText& label, bool shown, int) {
    return {*draft_, dimension_, draft_->group(dimension_, group_, label, shown)};
}

BpDimension::BpDimension(PivotTableDraft& draft, std::size_t dimension)
    : draft_(&draft), dimension_(dimension) {}

BpDimension& BpDimension::Position(int axis, int index, int first, int second) {
    assert(axis >= 0 && axis <= 2);
    draft_->table.dimensions[dimension_].position = {axis, index, first, second};
    return *this;
}

BpCategory BpDimension::Category(const BpCellText& label) {
    return {*draft_, dimension_, draft_->category(dimension_, -1, label)};
}

BpGroup BpDimension::Group(const BpCellText& label, bool shown, int) {
    return {*draft_, dimension_, draft_->group(dimension_, -1, label, shown)};
}

BpPivotTable::BpPivotTable(std::unique_ptr<PivotTableDraft> draft) : draft_(std::move(draft)) {}

BpPivotTable::BpPivotTable(BpPivotTable&&) noexcept = default;

BpPivotTable::~BpPivotTable() { Finish(); }

void BpPivotTable::Caption(const BpCellText& caption) {
    assert(draft_);
    draft_->table.caption = caption.shown();
}

void BpPivotTable::HideTitle() {
    assert(draft_);
    draft_->table.titleHidden = true;
}

void BpPivotTable::MinDataColumnWidth(int points) {
    assert(draft_);
    draft_->table.minDataColumnWidth = points;
}

void BpPivotTable::MaxDataColumnWidth(int points) {
    assert(draft_);
    draft_->table.maxDataColumnWidth = points;
}

BpDimension BpPivotTable::Dimension(const BpCellText& label, int kind) {
    assert(draft_);
    return {*draft_, draft_->dimension(label, kind)};
}

void BpPivotTable::Finish() {
    if (!draft_) return;
    const std::unique_ptr<PivotTableDraft> draft = std::move(draft_);
    OutputLog& log = OutputLog::current();
    if (!log.hasListeners()) return;
    draft->finish();
    auto built = std::make_shared<const PivotTable>(std::move(draft->table));
    tables::Table shown = shownTable(*built);
    std::string subtype = built->subtype;
    log.publish(TableFinished{std::move(built), std::move(shown), std::move(subtype)});
}

}  // namespace vexa
