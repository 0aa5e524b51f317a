#include "frontend/import/json_table.h"

#include <algorithm>
#include <utility>

#include "frontend/import/import_problem.h"
#include "frontend/import/json_dimensions.h"
#include "frontend/import/json_values.h"

namespace vexa::frontend {

namespace {

using tables::Area;
using tables::CellKind;
using tables::Place;
using tables::TableStyle;

/// Reads a table in the order in which its parts need each other.
class TableReader {
  public:
    TableReader(JsonObject& object, JsonCells& cells, const ImportContext& context)
        : object_(object), cells_(cells), context_(context) {}

    bool read() { return readTexts() && readAxes() && readOwnLook() && checkCells(); }

    [[nodiscard]] tables::Table make() {
        tables::TableDataBuilder builder(std::move(dimensions_), std::move(footnotes_));
        const Place count = builder.placeCount();
        for (std::size_t i = 0; i < cells_.cells.size(); ++i) {
            setCell(builder, places_.empty() ? Place{i} : places_[i], count, cells_.cells[i]);
        }
        cells_ = {};
        return tables::makeTable(builder.finish(), std::move(view_), std::move(style_));
    }

  private:
    bool readTexts() {
        for (const char* const streamed : {"cells", "sparse"}) static_cast<void>(object_.find(streamed));
        object_.read("title", view_.title);
        object_.read("caption", view_.caption);
        object_.read("corner", view_.corner);
        object_.read("titleHidden", view_.titleHidden);
        object_.readPositive("minColumnWidth", view_.minColumnWidth);
        object_.readPositive("maxColumnWidth", view_.maxColumnWidth);
        std::optional<std::size_t> printing;
        readWord(object_, "printLayers", {"visible", "all"}, printing);
        if (printing) view_.layerPrinting = static_cast<tables::LayerPrinting>(*printing);
        readAreaStyle("titleStyle", Area::title);
        readAreaStyle("captionStyle", Area::caption);
        readAreaStyle("footnoteStyle", Area::footnotes);
        object_.forEach("footnotes", [this](Json& text, const JsonPlace& place) {
            if (!text.is_string())
                return object_.refusal().refuse(place, mismatch(foundText(text), "a text"_text));
            footnotes_.push_back(std::move(text.get_ref<std::string&>()));
            return true;
        });
        return object_.isFine();
    }

    void readAreaStyle(std::string_view key, Area area) {
        tables::CellStyle style;
        readStyleAt(object_, key, style);
        style_.setArea(area, style_.intern(style));
    }

    bool readAxes() {
        return readAxis("layers", view_.layers) && readAxis("rows", view_.rows) &&
               readAxis("columns", view_.columns) && checkPlaces();
    }

    bool readAxis(std::string_view key, std::vector<tables::DimensionId>& axis) {
        std::vector<JsonDimension> read;
        if (!readDimensions(object_, key, key == "layers", footnotes_.size(), context_, read)) return false;
        for (JsonDimension& each : read) {
            const auto id = static_cast<tables::DimensionId>(dimensions_.size());
            axis.push_back(id);
            for (const JsonDimension::Label& label : each.categories) {
                style_.setCategory(id, label.id, style_.intern(label.style));
                style_.setWidth(id, label.id, label.width);
            }
            for (const JsonDimension::Label& label : each.groups) {
                style_.setGroup(id, label.id, style_.intern(label.style));
            }
            dimensions_.push_back(std::move(each.dimension));
            view_.dimensions.push_back(std::move(each.view));
        }
        return true;
    }

    bool checkPlaces() {
        if (tables::placeCountOf(dimensions_)) return true;
        return object_.refusal().refuse(
            object_.place(),
            translated("The categories of this table make more places than a table can have."_text));
    }

    bool readOwnLook() {
        std::string look;
        object_.read("look", look);
        if (look.empty() || !object_.isFine()) return object_.isFine();
        const bool isXml = look.find('<') != std::string::npos;
        ReadLook found = isXml ? readLook(look) : context_.looks.find(look);
        if (found.look == nullptr) return object_.refusal().refuse(object_.place("look"), found.problem);
        style_.setLook(std::move(found.look));
        return true;
    }

    bool checkCells() {
        view_.emptyLinesLeftOut = cells_.isSparse;
        if (cells_.isSparse) return findPlaces() && checkFootnotes();
        const Place count = *tables::placeCountOf(dimensions_);
        if (cells_.isThere && cells_.cells.size() != count) {
            return object_.refusal().refuse(
                object_.place("cells"),
                composed("Cells found: ^1. The categories of layers, rows and columns make: ^2."_text,
                         {std::to_string(cells_.cells.size()), std::to_string(count)}));
        }
        return checkFootnotes();
    }

    /// Of a sparse list: where each cell stands.
    bool findPlaces() {
        if (!cells_.cells.empty() && cells_.atLength != dimensions_.size()) {
            return object_.refusal().refuse(
                object_.place("sparse"),
                composed("Numbers in each list: ^1. Dimensions of the table: ^2."_text,
                         {std::to_string(cells_.atLength), std::to_string(dimensions_.size())}));
        }
        for (std::size_t i = 0; i < cells_.cells.size(); ++i) {
            Place place = 0;
            for (std::size_t d = 0; d < dimensions_.size(); ++d) {
                const std::size_t category = cells_.at[i * cells_.atLength + d];
                const std::size_t categories = dimensions_[d].categories.size();
                if (category >= categories) return refuseCategory(i, d, category, categories);
                place = place * categories + category;
            }
            places_.push_back(place);
        }
        return checkRepetition();
    }

    bool refuseCategory(std::size_t cell, std::size_t dimension, std::size_t category,
                        std::size_t categories) {
        const JsonPlace sparse = object_.place("sparse");
        const JsonPlace element(sparse, cell);
        const JsonPlace at(element, "at");
        return object_.refusal().refuse(
            JsonPlace(at, dimension),
            composed("There is no category ^1; the dimension has ^2, counted from 0."_text,
                     {std::to_string(category), std::to_string(categories)}));
    }

    bool checkRepetition() {
        if (std::is_sorted(places_.begin(), places_.end(), std::less_equal<>())) return true;
        std::vector<std::size_t> order(places_.size());
        for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
        std::sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
            return places_[a] != places_[b] ? places_[a] < places_[b] : a < b;
        });
        const auto same = [this](std::size_t a, std::size_t b) { return places_[a] == places_[b]; };
        const auto twice = std::adjacent_find(order.begin(), order.end(), same);
        if (twice == order.end()) return true;
        const JsonPlace sparse = object_.place("sparse");
        return object_.refusal().refuse(JsonPlace(sparse, *(twice + 1)),
                                        translated("This place has a cell already."_text));
    }

    bool checkFootnotes() {
        for (std::size_t i = 0; i < cells_.cells.size(); ++i) {
            if (cells_.cells[i].details == 0) continue;
            for (const tables::FootnoteId footnote : cells_.details[cells_.cells[i].details - 1].footnotes) {
                if (footnote < footnotes_.size()) continue;
                const JsonPlace list = object_.place(cells_.isSparse ? "sparse" : "cells");
                return object_.refusal().refuse(
                    JsonPlace(list, i),
                    composed("There is no footnote ^1; the table has ^2."_text,
                             {std::to_string(footnote + 1), std::to_string(footnotes_.size())}));
            }
        }
        return object_.isFine();
    }

    void setCell(tables::TableDataBuilder& builder, Place place, Place count, const JsonCell& cell) {
        JsonCellDetails* const details = cell.details == 0 ? nullptr : &cells_.details[cell.details - 1];
        if (cell.kind == CellKind::number) {
            builder.setNumber(place, cell.number,
                              details == nullptr ? tables::DisplayFormat() : details->format);
        } else if (cell.kind == CellKind::text) {
            builder.setText(place, cells_.texts[cell.text]);
        }
        if (details == nullptr) return;
        if (!details->style.isEmpty()) style_.setCell(place, style_.intern(details->style), count);
        if (details->shown) builder.setShown(place, std::move(*details->shown));
        if (!details->footnotes.empty()) builder.setFootnotes(place, std::move(details->footnotes));
    }

    JsonObject& object_;
    JsonCells& cells_;
    const ImportContext& context_;
    std::vector<tables::TableDimension> dimensions_;
    std::vector<std::string> footnotes_;
    std::vector<Place> places_;  // of the cells of a sparse list
    tables::TableView view_;
    TableStyle style_;
};

}  // namespace

bool readTable(JsonObject& object, JsonCells& cells, const ImportContext& context, ItemContent& content) {
    TableReader reader(object, cells, context);
    if (!reader.read() || !object.finish()) return false;
    content = TableContent{reader.make()};
    return true;
}

}  // namespace vexa::frontend
