#include "frontend/export/xls/sheet_stream.h"

#include <algorithm>
#include <cmath>

#include "frontend/export/xls/place_records.h"

namespace vexa::frontend::biff {

namespace {

constexpr std::size_t rangesOfRecord = 1027;
constexpr std::size_t pageBreakBytes = 6;
constexpr std::size_t mostPageBreaks = 1026;
constexpr std::size_t indexBytes = 16;  ///< without the places of blocks

PackageResult brokenSheet() {
    return {PackageProblem::damaged, "its records are damaged, or in an unknown order"_text};
}

bool isTableRecord(std::uint16_t id) {
    return id == id::row || id == id::dbCell || isCellRecord(id) || goesWithFormula(id);
}

/// Records of the view of a sheet: merged cells stand behind the last of them.
bool isViewRecord(std::uint16_t id) {
    return id == id::window2 || id == id::pageLayoutView || id == id::scale || id == id::pane ||
           id == id::selection || id == id::customViewEnd || id == id::sort || id == id::dxGCol;
}

CellRange rangeOf(std::string_view content, std::size_t at) {
    return {twoAt(content, at), twoAt(content, at + 2), twoAt(content, at + 4), twoAt(content, at + 6)};
}

bool isObjectRecord(std::uint16_t id) {
    return id == id::obj || id == id::textObject || id == id::imageData || id == id::bof;
}

/// Where cells would stand on a sheet without any.
std::ptrdiff_t placeOfTable(const std::vector<RecordView>& records) {
    for (const std::uint16_t wanted : {id::dimensions, id::window2, id::eof}) {
        for (std::size_t i = 0; i < records.size(); ++i) {
            if (records[i].id == wanted) {
                return static_cast<std::ptrdiff_t>(wanted == id::dimensions ? i + 1 : i);
            }
        }
    }
    return 0;
}

/// The last record of these kinds; `fallback` where there is none.
template <typename IsOne>
std::size_t lastOf(const std::vector<RecordView>& records, std::size_t fallback, IsOne isOne) {
    for (std::size_t i = records.size(); i-- > 0;) {
        if (isOne(records[i].id)) return i;
    }
    return fallback;
}

}  // namespace

PackageResult SheetStream::read(std::string_view substream) {
    std::vector<RecordView> records;
    if (!splitRecords(substream, records)) return brokenSheet();
    if (twoAt(records.front().content(), 0) != version8) return brokenSheet();
    const auto isOfTable = [](const RecordView& record) { return isTableRecord(record.id); };
    auto table = std::find_if(records.begin(), records.end(), isOfTable);
    if (table == records.end()) table = records.begin() + placeOfTable(records);
    const auto behind = std::find_if_not(table, records.end(), isOfTable);
    if (std::any_of(behind, records.end(), isOfTable)) return brokenSheet();
    for (auto record = table; record != behind; ++record) {
        if (record->id != id::dbCell && !cells_.read(*record)) return brokenSheet();
    }
    cells_.finishReading();
    front_.assign(records.begin(), table);
    back_.assign(behind, records.end());
    for (const RecordView& record : records) {
        if (isOfTable(record)) continue;
        readRecord(record);
    }
    return {};
}

void SheetStream::readRecord(const RecordView& record) {
    const std::string_view content = record.content();
    columns_.read(record);
    drawing_.read(record);
    if (record.id == id::mergedCells) {
        readMerged(record);
    } else if (record.id == id::pageBreaks) {
        for (std::size_t at = 2; at + pageBreakBytes <= content.size(); at += pageBreakBytes) {
            pageBreaks_[twoAt(content, at)] = fourAt(content, at + 2);
        }
    } else if (record.id == id::pivotView) {
        pivots_.push_back(rangeOf(content, 0));
    } else if (record.id == id::defaultRowHeight) {
        usualHeight_ = twoAt(content, 2) / twipsOfPoint;
    }
}

void SheetStream::readMerged(const RecordView& record) {
    const std::string_view content = record.content();
    const std::size_t count = std::min<std::size_t>(twoAt(content, 0), content.size() / rangeBytes);
    for (std::size_t i = 0; i < count; ++i) merged_.push_back(rangeOf(content, 2 + i * rangeBytes));
}

SheetExtent SheetStream::used() const {
    SheetExtent extent = cells_.used();
    for (const CellRange& range : merged_) extent.include(range.lastRow + 1, range.lastColumn + 1);
    const SheetExtent drawn = drawing_.used();
    extent.include(drawn.rows, drawn.columns);
    return extent;
}

PackageResult SheetStream::place(const PlacedContent& placed, BookDrawings& drawings) {
    const bool draws = std::any_of(placed.content.pictures.begin(), placed.content.pictures.end(),
                                   [](const SheetPicture& picture) { return !picture.png.empty(); });
    if (draws && !drawing_.canGrow()) {
        return {PackageProblem::damaged, "its drawings are of a kind that no picture can be added to"_text};
    }
    const SheetExtent before = cells_.used();
    placeColumns(placed, before.columns);
    cells_.place(placed);
    for (const CellRange& pivot : pivots_) {
        if (cells_.placedWithin(pivot)) {
            return {PackageProblem::damaged,
                    "the export would stand on a part of a pivot table; choose another place"_text};
        }
    }
    leaveOutPlaces(back_, SheetFootprint(placed.content, {placed.row, placed.column}), pieces_);
    placeMerged(placed);
    placeRows(placed, before.rows);
    placePageBreaks(placed);
    placePictures(placed, drawings);
    return {};
}

/// Columns with something in them are made wider only.
void SheetStream::placeColumns(const PlacedContent& placed, std::uint32_t inUse) {
    for (const auto& [column, points] : placed.content.widths) {
        const std::uint32_t at = placed.column + column;
        if (at < columnCount) columns_.widen(at, points, at < inUse);
    }
}

void SheetStream::placeRows(const PlacedContent& placed, std::uint32_t inUse) {
    for (const auto& [row, points] : placed.content.heights) {
        cells_.setHeight(placed.row + row, points, placed.row + row < inUse);
    }
    if (usualHeight_ == usualRowHeight) return;
    // What is reserved for a picture are rows of the height that is usual in exports.
    for (const SheetPicture& picture : placed.content.pictures) {
        for (std::uint32_t i = 0; i < picture.rows; ++i) {
            cells_.setHeight(placed.row + picture.row + i, usualRowHeight, true);
        }
    }
}

/// Merged cells that were there go where a cell was put into them.
void SheetStream::placeMerged(const PlacedContent& placed) {
    const auto erased =
        std::erase_if(merged_, [this](const CellRange& range) { return cells_.placedWithin(range); });
    for (const SheetRange& range : placed.content.merged) {
        const std::uint32_t row = placed.row + range.row;
        const std::uint32_t column = placed.column + range.column;
        merged_.push_back({row, row + range.rows - 1, column, column + range.columns - 1});
    }
    mergedChanged_ = erased > 0 || !placed.content.merged.empty();
}

void SheetStream::placePageBreaks(const PlacedContent& placed) {
    constexpr std::uint32_t throughAllColumns = (columnCount - 1) << 16U;
    for (const std::uint32_t row : placed.content.pageBreaks) {
        if (pageBreaks_.size() == mostPageBreaks) return;
        pageBreaksChanged_ =
            pageBreaks_.emplace(placed.row + row, throughAllColumns).second || pageBreaksChanged_;
    }
}

void SheetStream::placePictures(const PlacedContent& placed, BookDrawings& drawings) {
    for (const SheetPicture& picture : placed.content.pictures) {
        if (picture.png.empty()) continue;
        drawing_.add(drawings, picture.png, picture.alternative,
                     anchorOf(picture, placed.row + picture.row, placed.column + picture.column));
    }
}

/// The cell in which the picture's lower right corner is, by the sizes that columns and rows now have.
PictureAnchor SheetStream::anchorOf(const SheetPicture& picture, std::uint32_t row,
                                    std::uint32_t column) const {
    constexpr double partsOfColumn = 1024;
    constexpr double partsOfRow = 256;
    std::uint32_t lastColumn = column;
    double width = picture.width;
    for (; lastColumn + 1 < columnCount && width > columns_.points(lastColumn); ++lastColumn) {
        width -= columns_.points(lastColumn);
    }
    std::uint32_t lastRow = row;
    double height = picture.height;
    for (; lastRow + 1 < rowCount && height > cells_.height(lastRow, usualHeight_); ++lastRow) {
        height -= cells_.height(lastRow, usualHeight_);
    }
    const auto share = [](double part, double whole, double parts) {
        const double inside = whole > 0 ? std::clamp(part / whole, 0.0, 1.0) : 0.0;
        return static_cast<std::uint16_t>(std::min(std::lround(inside * parts), std::lround(parts) - 1));
    };
    return {static_cast<std::uint16_t>(column),
            0,
            static_cast<std::uint16_t>(row),
            0,
            static_cast<std::uint16_t>(lastColumn),
            share(width, columns_.points(lastColumn), partsOfColumn),
            static_cast<std::uint16_t>(lastRow),
            share(height, cells_.height(lastRow, usualHeight_), partsOfRow)};
}

std::string SheetStream::write() {
    std::string table;
    std::vector<std::uint32_t> blocks;
    cells_.append(table, usualHeight_, blocks);
    std::string out;
    writeFront(out, blocks.size());
    const std::size_t tableAt = out.size();
    out += table;
    mendIndex(out, tableAt, blocks);
    writeBack(out);
    return out;
}

void SheetStream::writeFront(std::string& out, std::size_t blocks) {
    const std::size_t behindColumns =
        lastOf(front_, front_.size(), [](std::uint16_t id) { return id == id::defColWidth; });
    const std::size_t behindSettings =
        lastOf(front_, front_.size(), [](std::uint16_t id) { return id == id::wsBool; });
    for (std::size_t i = 0; i < front_.size(); ++i) {
        const RecordView& record = front_[i];
        if (record.id == id::index) {
            indexAt_ = out.size();
            Records(out).begin(id::index).bytes(std::string(indexBytes + 4 * blocks, '\0')).end();
        } else if (record.id == id::dimensions) {
            writeDimensions(out, record.raw);
        } else if ((record.id != id::colInfo || !columns_.changed()) &&
                   (record.id != id::pageBreaks || !pageBreaksChanged_)) {
            if (record.id == id::defColWidth) columnsAt_ = out.size();
            out += record.raw;
        }
        if (i == behindColumns) writeColumns(out);
        if (i == behindSettings && pageBreaksChanged_) writePageBreaks(out);
    }
    writeColumns(out);
}

void SheetStream::writePageBreaks(std::string& out) const {
    Records records(out);
    records.begin(id::pageBreaks).two(static_cast<std::uint32_t>(pageBreaks_.size()));
    for (const auto& [row, columns] : pageBreaks_) records.two(row).four(columns);
    records.end();
}

void SheetStream::writeColumns(std::string& out) {
    if (columns_.changed() && !columnsWritten_) columns_.append(out);
    columnsWritten_ = true;
}

void SheetStream::writeDimensions(std::string& out, std::string_view raw) const {
    const std::size_t at = out.size() + headerBytes;
    out += raw;
    constexpr std::size_t dimensionsBytes = 14;
    if (raw.size() < headerBytes + dimensionsBytes) return;
    const SheetExtent extent = cells_.extent();
    const auto raise = [&out, at](std::size_t field, std::uint32_t value, std::size_t count) {
        if (numberAt(out, at + field, count) < value) setNumber(out, at + field, value, count);
    };
    raise(4, extent.rows, 4);
    raise(10, extent.columns, 2);
    // Where rows and columns begin is worth nothing to anybody, but it must not lie behind a cell.
    setNumber(out, at, 0, 4);
    setNumber(out, at + 8, 0, 2);
}

void SheetStream::mendIndex(std::string& out, std::size_t tableAt,
                            const std::vector<std::uint32_t>& blocks) const {
    if (indexAt_ == 0) return;
    const std::size_t at = indexAt_ + headerBytes;
    setNumber(out, at + 8, cells_.extent().rows, 4);
    setNumber(out, at + 12, static_cast<std::uint32_t>(columnsAt_), 4);
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        setNumber(out, at + indexBytes + 4 * i, static_cast<std::uint32_t>(tableAt + blocks[i]), 4);
    }
}

void SheetStream::writeBack(std::string& out) const {
    const std::size_t none = back_.size();
    const std::size_t behindView = lastOf(back_, none, isViewRecord);
    std::size_t behindDrawing = lastOf(back_, none, [](std::uint16_t id) { return id == id::drawing; });
    while (behindDrawing + 1 < none && isObjectRecord(back_[behindDrawing + 1].id)) ++behindDrawing;
    bool headWritten = false;
    if (drawing_.changed() && drawing_.isNew()) out += drawing_.appended();
    for (std::size_t i = 0; i < none; ++i) {
        const RecordView& record = back_[i];
        if (record.id == id::drawing && drawing_.changed() && !headWritten) {
            out += drawing_.mendedHead();
            headWritten = true;
        } else if ((record.id != id::mergedCells || !mergedChanged_) &&
                   (record.id != id::colInfo || !columns_.changed())) {
            out += record.raw;
        }
        if (i == behindDrawing && drawing_.changed() && !drawing_.isNew()) out += drawing_.appended();
        if (i == behindView && mergedChanged_) writeMerged(out);
    }
}

void SheetStream::writeMerged(std::string& out) const {
    Records records(out);
    for (std::size_t begin = 0; begin < merged_.size(); begin += rangesOfRecord) {
        const std::size_t end = std::min(begin + rangesOfRecord, merged_.size());
        records.begin(id::mergedCells).two(static_cast<std::uint32_t>(end - begin));
        for (std::size_t i = begin; i < end; ++i) {
            records.two(merged_[i].firstRow).two(merged_[i].lastRow);
            records.two(merged_[i].firstColumn).two(merged_[i].lastColumn);
        }
        records.end();
    }
}

}  // namespace vexa::frontend::biff
