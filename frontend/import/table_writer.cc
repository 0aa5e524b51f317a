#include "frontend/import/table_writer.h"

#include "frontend/import/cells_writer.h"
#include "frontend/looks/look_words.h"

namespace vexa::frontend {

namespace {

using tables::Area;
using tables::Axis;
using tables::CategoryId;
using tables::DimensionId;
using tables::GroupId;
using tables::TableCategory;

class TableWriter {
  public:
    TableWriter(JsonText& json, const tables::Table& table, const StatisticWords& words)
        : json_(json),
          table_(table),
          data_(*table.data),
          view_(*table.view),
          style_(*table.style),
          words_(words) {}

    void write() {
        writeTexts();
        writeAxis("rows", Axis::row);
        writeAxis("columns", Axis::column);
        writeAxis("layers", Axis::layer);
        writeCells(json_, table_);
        writeFootnotes();
    }

  private:
    void writeTexts() {
        writeText(json_, "title", view_.title);
        writeFlag(json_, "titleHidden", view_.titleHidden);
        writeText(json_, "caption", view_.caption);
        writeText(json_, "corner", view_.corner);
        const tables::TableLook& look = *style_.look();
        if (style_.look() != tables::plainLook() && !(look == *tables::plainLook())) {
            writeText(json_, "look", look.source.empty() ? look.name : look.source);
        }
        writeNumber(json_, "minColumnWidth", view_.minColumnWidth);
        writeNumber(json_, "maxColumnWidth", view_.maxColumnWidth);
        if (view_.layerPrinting) {
            json_.key("printLayers");
            json_.text(*view_.layerPrinting == tables::LayerPrinting::all ? "all" : "visible");
        }
        writeStyleAt(json_, "titleStyle", style_.style(style_.area(Area::title)));
        writeStyleAt(json_, "captionStyle", style_.style(style_.area(Area::caption)));
        writeStyleAt(json_, "footnoteStyle", style_.style(style_.area(Area::footnotes)));
    }

    void writeAxis(std::string_view key, Axis axis) {
        const std::vector<DimensionId>& ids = view_.axis(axis);
        if (ids.empty()) return;
        json_.newLine();
        json_.key(key);
        json_.beginList();
        for (const DimensionId id : ids) {
            if (id != ids.front()) json_.newLine();
            writeDimension(id, axis);
        }
        json_.endList();
    }

    void writeDimension(DimensionId id, Axis axis) {
        const tables::TableDimension& dimension = data_.dimensions()[id];
        const tables::DimensionView& view = view_.dimensions[id];
        const std::vector<CategoryId> order = printedOrder(dimension, view);
        json_.beginObject();
        writeText(json_, "label", dimension.label);
        writeFlag(json_, "labelHidden", view.labelHidden);
        json_.key("categories");
        json_.beginList();
        const std::size_t indentation = json_.indentation();
        std::vector<GroupId> open;
        for (const CategoryId category : order) {
            enterGroups(id, axis, dimension.categories[category].group, open);
            json_.newLineIfLong();
            json_.indent(indentation);
            writeCategory(id, axis, category);
        }
        leaveGroups(open, 0);
        json_.endList();
        if (axis == Axis::layer && !order.empty() && order.front() != view.shown) {
            std::uint64_t shown = 1;
            while (shown < order.size() && order[shown - 1] != view.shown) ++shown;
            json_.key("shown");
            json_.whole(shown);
        }
        json_.endObject();
    }

    /// Closes and opens groups until those of a category are open.
    void enterGroups(DimensionId id, Axis axis, GroupId innermost, std::vector<GroupId>& open) {
        const std::vector<tables::TableGroup>& groups = data_.dimensions()[id].groups;
        std::vector<GroupId> chain;
        for (GroupId group = innermost; group != tables::noGroup; group = groups[group].parent) {
            chain.insert(chain.begin(), group);
        }
        std::size_t shared = 0;
        while (shared < open.size() && shared < chain.size() && open[shared] == chain[shared]) ++shared;
        leaveGroups(open, shared);
        for (; open.size() < chain.size(); open.push_back(chain[open.size()])) {
            const GroupId group = chain[open.size()];
            json_.newLineIfLong();
            json_.beginObject();
            json_.key("group");
            json_.text(groups[group].label);
            writeStyle(json_, labelStyle(axis, style_.group(id, group)));
            json_.key("categories");
            json_.beginList();
        }
    }

    void leaveGroups(std::vector<GroupId>& open, std::size_t left) {
        for (; open.size() > left; open.pop_back()) {
            json_.endList();
            json_.endObject();
        }
    }

    void writeCategory(DimensionId id, Axis axis, CategoryId number) {
        const TableCategory& category = data_.dimensions()[id].categories[number];
        const tables::CellStyle style = labelStyle(axis, style_.category(id, number));
        const std::optional<double> width = style_.width(id, number);
        const tables::DisplayFormat format = printedFormat(id, category);
        const bool isHidden = view_.dimensions[id].isHidden(number);
        const bool hasRole = category.role != words_.roleOf(category.label);
        const bool isPlain = !hasRole && format == tables::DisplayFormat() && category.footnotes.empty() &&
                             !width && !isHidden && style.isEmpty();
        if (isPlain) return json_.text(category.label);
        json_.beginObject();
        json_.key("label");
        json_.text(category.label);
        if (hasRole) writeText(json_, "role", roleWord(category.role));
        writeFormat(json_, format);
        writeFootnoteNumbers(json_, category.footnotes);
        writeNumber(json_, "width", width);
        writeFlag(json_, "hidden", isHidden);
        writeStyle(json_, style);
        json_.endObject();
    }

    /// A format for all numbers stands before those of all categories: the innermost ones say it then, and no
    /// others.
    [[nodiscard]] tables::DisplayFormat printedFormat(DimensionId id, const TableCategory& category) const {
        if (style_.format() == tables::DisplayFormat()) return category.format;
        return view_.formatOrder().front() == id ? style_.format() : tables::DisplayFormat();
    }

    /// Styles of whole areas have no key of their own.
    [[nodiscard]] tables::CellStyle labelStyle(Axis axis, tables::StyleId own) const {
        const Area area = axis == Axis::row      ? Area::rowLabels
                          : axis == Axis::column ? Area::columnLabels
                                                 : Area::layers;
        tables::CellStyle style = style_.style(style_.area(area));
        style.overlay(style_.style(own));
        return style;
    }

    void writeFootnotes() {
        if (data_.footnotes().empty()) return;
        json_.newLine();
        json_.key("footnotes");
        json_.beginList();
        for (const std::string& footnote : data_.footnotes()) {
            json_.newLineIfLong();
            json_.text(footnote);
        }
        json_.endList();
    }

    JsonText& json_;
    const tables::Table& table_;
    const tables::TableData& data_;
    const tables::TableView& view_;
    const tables::TableStyle& style_;
    const StatisticWords& words_;
};

}  // namespace

void writeTable(JsonText& json, const tables::Table& table, const StatisticWords& words) {
    TableWriter(json, table, words).write();
}

void writeText(JsonText& json, std::string_view key, std::string_view value) {
    if (value.empty()) return;
    json.key(key);
    json.text(value);
}

void writeNumber(JsonText& json, std::string_view key, std::optional<double> value) {
    // What is not above 0 sets nothing.
    if (!value || !(*value > 0)) return;
    json.key(key);
    json.number(*value);
}

void writeFlag(JsonText& json, std::string_view key, bool value) {
    if (!value) return;
    json.key(key);
    json.flag(true);
}

void writeStyle(JsonText& json, const tables::CellStyle& style) {
    const auto flag = [&json](std::string_view key, std::optional<bool> value) {
        if (!value) return;
        json.key(key);
        json.flag(*value);
    };
    flag("bold", style.bold);
    flag("italic", style.italic);
    flag("underline", style.underline);
    writeText(json, "font", style.font);
    writeNumber(json, "size", style.size);
    if (style.color) writeText(json, "color", colorText(*style.color));
    if (style.background) writeText(json, "background", colorText(*style.background));
}

void writeStyleAt(JsonText& json, std::string_view key, const tables::CellStyle& style) {
    if (style.isEmpty()) return;
    json.key(key);
    json.beginObject();
    writeStyle(json, style);
    json.endObject();
}

void writeFootnoteNumbers(JsonText& json, const std::vector<tables::FootnoteId>& footnotes) {
    if (footnotes.empty()) return;
    json.key("footnotes");
    json.beginList();
    for (const tables::FootnoteId footnote : footnotes) json.whole(footnote + std::uint64_t{1});
    json.endList();
}

void writeFormat(JsonText& json, tables::DisplayFormat format) {
    if (format.kind != tables::FormatKind::none) writeText(json, "format", tables::formatText(format));
}

}  // namespace vexa::frontend
