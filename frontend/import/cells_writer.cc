#include "frontend/import/cells_writer.h"

#include <algorithm>
#include <numeric>

#include "frontend/import/table_writer.h"

namespace vexa::frontend {

namespace {

using tables::CategoryId;
using tables::CellKind;
using tables::DimensionId;
using tables::Place;

/// A table with more places than this is printed place by place only when one in `kFilledEnough` is filled.
/// Of one with several dimensions on an axis the empty lines would be left out then, so only far larger ones
/// are.
constexpr Place kManyPlaces = 10'000;
constexpr Place kTooManyPlaces = Place{1} << 24;
constexpr Place kFilledEnough = 8;

class CellsWriter {
  public:
    CellsWriter(JsonText& json, const tables::Table& table)
        : json_(json), data_(*table.data), view_(*table.view), style_(*table.style) {
        dataStyle_ = style_.style(style_.area(tables::Area::data));
    }

    void write() {
        const Place many = hasSeveral() ? kTooManyPlaces : kManyPlaces;
        const bool isLarge =
            data_.placeCount() > many && data_.placeCount() / kFilledEnough > data_.filledCount();
        if (leavesLinesOut() || isLarge) {
            writeSparse();
        } else if (data_.filledCount() > 0 || !style_.cells().isEmpty() || !dataStyle_.isEmpty()) {
            writeDense();
        }
    }

  private:
    [[nodiscard]] bool hasSeveral() const {
        return view_.rows.size() > 1 || view_.columns.size() > 1 || view_.layers.size() > 1;
    }

    /// Whether the table has lines that are left out because nothing stands in them, or may have.
    [[nodiscard]] bool leavesLinesOut() const {
        return view_.emptyLinesLeftOut && hasSeveral() && data_.filledCount() < data_.placeCount();
    }

    /// What each line of an axis adds to a place.
    [[nodiscard]] std::vector<Place> offsetsOf(const std::vector<DimensionId>& axis) const {
        std::vector<Place> offsets{0};
        for (const DimensionId id : axis) {
            const std::vector<CategoryId> order = printedOrder(data_.dimensions()[id], view_.dimensions[id]);
            std::vector<Place> finer;
            finer.reserve(offsets.size() * order.size());
            for (const Place offset : offsets) {
                for (const CategoryId category : order) finer.push_back(offset + category * data_.stride(id));
            }
            offsets = std::move(finer);
        }
        return offsets;
    }

    void writeDense() {
        const std::vector<Place> layers = offsetsOf(view_.layers);
        const std::vector<Place> rows = offsetsOf(view_.rows);
        const std::vector<Place> columns = offsetsOf(view_.columns);
        json_.newLine();
        json_.key("cells");
        json_.beginList();
        bool isFirst = true;
        for (const Place layer : layers) {
            for (const Place row : rows) {
                if (!isFirst) json_.newLine();
                isFirst = false;
                for (const Place column : columns) writeDenseCell(layer + row + column);
            }
        }
        json_.endList();
    }

    void writeDenseCell(Place place) {
        const tables::TableCell* const cell = data_.find(place);
        if (isPlain(place, cell)) return writeValue(cell);
        json_.beginObject();
        writeKeyedValue(cell);
        writeDetails(place, cell);
        json_.endObject();
    }

    void writeSparse() {
        const std::vector<DimensionId> ids = printedDimensions();
        json_.newLine();
        json_.key("sparse");
        json_.beginList();
        for (const Entry& entry : entriesOf(ids)) {
            json_.newLine();
            json_.beginObject();
            json_.key("at");
            json_.beginList();
            for (std::size_t i = 0; i < ids.size(); ++i) json_.whole(positionAt(entry.position, ids, i));
            json_.endList();
            const tables::TableCell* const cell = data_.find(entry.place);
            writeKeyedValue(cell);
            writeDetails(entry.place, cell);
            json_.endObject();
        }
        json_.endList();
    }

    struct Entry {
        Place position = 0;  ///< the place in the order of print
        Place place = 0;
    };

    [[nodiscard]] std::vector<DimensionId> printedDimensions() const {
        std::vector<DimensionId> ids = view_.layers;
        ids.insert(ids.end(), view_.rows.begin(), view_.rows.end());
        ids.insert(ids.end(), view_.columns.begin(), view_.columns.end());
        return ids;
    }

    [[nodiscard]] Place countOf(DimensionId id) const { return data_.dimensions()[id].categories.size(); }

    [[nodiscard]] Place positionAt(Place position, const std::vector<DimensionId>& ids,
                                   std::size_t index) const {
        for (std::size_t i = ids.size(); i-- > index + 1;) position /= countOf(ids[i]);
        return position % countOf(ids[index]);
    }

    /// Every place that has a cell or a style, in the order of print.
    [[nodiscard]] std::vector<Entry> entriesOf(const std::vector<DimensionId>& ids) const {
        std::vector<std::vector<Place>> positions;  // of each category, by printed dimension
        for (const DimensionId id : ids) {
            const std::vector<CategoryId> order = printedOrder(data_.dimensions()[id], view_.dimensions[id]);
            std::vector<Place>& inverse = positions.emplace_back(order.size());
            for (std::size_t i = 0; i < order.size(); ++i) inverse[order[i]] = i;
        }
        std::vector<Entry> entries;
        std::vector<CategoryId> coordinates(data_.dimensions().size());
        const auto add = [&](Place place) {
            data_.coordinates(place, coordinates);
            Place position = 0;
            for (std::size_t i = 0; i < ids.size(); ++i) {
                position = position * countOf(ids[i]) + positions[i][coordinates[ids[i]]];
            }
            entries.push_back({position, place});
        };
        data_.forEachCell([&](Place place, const tables::TableCell& /*cell*/) { add(place); });
        style_.cells().forEach([&](Place place, tables::StyleId id) {
            if (data_.find(place) == nullptr && !style_.style(id).isEmpty()) add(place);
        });
        std::sort(entries.begin(), entries.end(),
                  [](const Entry& a, const Entry& b) { return a.position < b.position; });
        return entries;
    }

    [[nodiscard]] tables::CellStyle styleOf(Place place) const {
        tables::CellStyle style = dataStyle_;
        style.overlay(style_.style(style_.cell(place)));
        return style;
    }

    /// The format that is the cell's own, and before all others.
    [[nodiscard]] tables::DisplayFormat formatOf(Place place, const tables::TableCell& cell) const {
        const tables::DisplayFormat own = style_.cellFormat(place);
        if (own.kind != tables::FormatKind::none) return own;
        if (style_.format().kind == tables::FormatKind::none) return cell.format;
        return data_.dimensions().empty() ? style_.format() : tables::DisplayFormat();
    }

    [[nodiscard]] bool isPlain(Place place, const tables::TableCell* cell) const {
        const bool hasStyle =
            !dataStyle_.isEmpty() || (style_.cell(place) != 0 && !style_.style(style_.cell(place)).isEmpty());
        if (cell == nullptr) return !hasStyle;
        const bool hasFormat =
            cell->kind == CellKind::number && formatOf(place, *cell).kind != tables::FormatKind::none;
        return !hasStyle && cell->extras == 0 && !hasFormat;
    }

    void writeValue(const tables::TableCell* cell) {
        if (cell == nullptr) {
            json_.null();
        } else if (cell->kind == CellKind::number) {
            json_.number(cell->number);
        } else {
            json_.text(data_.text(*cell));
        }
    }

    /// Nothing of a cell that only carries footnotes.
    void writeKeyedValue(const tables::TableCell* cell) {
        if (data_.isEmpty(cell)) return;
        json_.key("value");
        writeValue(cell);
    }

    void writeDetails(Place place, const tables::TableCell* cell) {
        if (cell != nullptr) {
            const tables::CellExtras& extras = data_.extras(*cell);
            if (cell->kind == CellKind::number) writeFormat(json_, formatOf(place, *cell));
            if (extras.shown) {
                json_.key("text");
                json_.text(*extras.shown);
            }
            writeFootnoteNumbers(json_, extras.footnotes);
        }
        writeStyle(json_, styleOf(place));
    }

    JsonText& json_;
    const tables::TableData& data_;
    const tables::TableView& view_;
    const tables::TableStyle& style_;
    tables::CellStyle dataStyle_;
};

}  // namespace

std::vector<CategoryId> printedOrder(const tables::TableDimension& dimension,
                                     const tables::DimensionView& view) {
    std::vector<CategoryId> order = view.order;
    if (order.empty()) {
        order.resize(dimension.categories.size());
        std::iota(order.begin(), order.end(), CategoryId{0});
    }
    return order;
}

void writeCells(JsonText& json, const tables::Table& table) { CellsWriter(json, table).write(); }

}  // namespace vexa::frontend
