#include "tests/unit/workbook/sheet_samples.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "backend/tables/formats/number_text.h"
#include "frontend/export/picture_files.h"
#include "frontend/export/workbook/sheet_place.h"
#include "tests/unit/export/export_samples.h"
#include "tests/unit/workbook/sheet_invariants.h"

namespace vexa::frontend {

namespace {

std::string placeName(std::uint32_t row, std::uint32_t column) { return sheetPlaceName({row, column}); }

}  // namespace

BuiltSheet::BuiltSheet(const std::string& items, const SheetLimits& limits, bool notesAndCaptions,
                       const ExportRequest& request) {
    ViewerDocument document;
    fill(document, items);
    build(document, limits, notesAndCaptions, request);
}

BuiltSheet::BuiltSheet(const ViewerDocument& document, const SheetLimits& limits, bool notesAndCaptions,
                       const ExportRequest& request) {
    build(document, limits, notesAndCaptions, request);
}

void BuiltSheet::build(const ViewerDocument& document, const SheetLimits& limits, bool notesAndCaptions,
                       const ExportRequest& request) {
    ExportSelection selection;
    if (request.layers == ExportedLayers::all) selection.layers = ExportedParts::all;
    if (request.modelViews == ExportedLayers::all) selection.views = ExportedParts::all;
    selection.hiddenItems = request.items == ExportedItems::all;
    const ExportPlan plan = planExport(document.outline(), selection);
    const ExportSurroundings surroundings;
    OutputFiles files;
    PictureFiles pictures(request, {}, {}, {}, files, report);
    content = buildSheet({document, plan, request, surroundings, files, report, pictures}, limits,
                         notesAndCaptions);
    if (!report.failed()) expectInvariants(content, limits);
}

double BuiltSheet::widthOf(const std::string& column) const {
    for (const auto& [number, width] : content.widths) {
        if (placeName(0, number) == column + "1") return width;
    }
    return 0;
}

double BuiltSheet::heightOf(std::uint32_t row) const {
    const auto found = content.heights.find(row - 1);
    return found == content.heights.end() ? 0 : found->second;
}

const SheetCell* BuiltSheet::find(const std::string& cell) const {
    const auto found = std::find_if(content.cells.begin(), content.cells.end(), [&](const SheetCell& each) {
        return placeName(each.row, each.column) == cell;
    });
    return found == content.cells.end() ? nullptr : &*found;
}

std::string BuiltSheet::shown(const SheetCell* cell) const {
    if (cell == nullptr) return "(none)";
    if (cell->value == SheetValue::blank) return "(blank)";
    if (cell->value == SheetValue::number) {
        return tables::numberText(cell->number, {}) + " " + content.styles[cell->style].numberFormat;
    }
    std::string text(content.text(*cell));
    if (cell->raised > 0) {
        text.insert(text.size() - cell->raised, "(");
        text += ')';
    }
    return text;
}

std::string BuiltSheet::at(const std::string& cell) const { return shown(find(cell)); }

const SheetStyle& BuiltSheet::styleAt(const std::string& cell) const {
    static const SheetStyle none;
    const SheetCell* const found = find(cell);
    EXPECT_NE(found, nullptr) << cell;
    return found == nullptr ? none : content.styles[found->style];
}

std::string BuiltSheet::merged() const {
    std::string text;
    for (const SheetRange& range : content.merged) {
        text += placeName(range.row, range.column) + ":" +
                placeName(range.row + range.rows - 1, range.column + range.columns - 1) + " ";
    }
    return text;
}

std::string BuiltSheet::firstColumn() const {
    std::string text;
    for (std::uint32_t row = 0; row < content.rows; ++row) text += at(placeName(row, 0)) + "\n";
    return text;
}

}  // namespace vexa::frontend
