#include "backend/pivot/shown_table.h"

#include <algorithm>
#include <charconv>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "backend/tables/formats/number_text.h"

namespace vexa {

namespace {

struct NamedColor {
    std::string_view name;
    std::uint32_t rgb;
};

constexpr NamedColor namedColors[] = {
    {"BLACK", 0x000000},  {"BLUE", 0x0000ff},  {"CYAN", 0x00ffff},      {"DARKGRAY", 0x404040},
    {"GRAY", 0x808080},   {"GREEN", 0x00ff00}, {"LIGHTGRAY", 0xc0c0c0}, {"MAGENTA", 0xff00ff},
    {"ORANGE", 0xffc800}, {"PINK", 0xffafaf},  {"RED", 0xff0000},       {"WHITE", 0xffffff},
    {"YELLOW", 0xffff00},
};

constexpr tables::DisplayFormat countFormat{tables::FormatKind::plain, 8, 0};

tables::GroupId groupId(int group) {
    return group < 0 ? tables::noGroup : static_cast<tables::GroupId>(group);
}

std::vector<tables::TableDimension> dimensionsOf(const PivotTable& built) {
    std::vector<tables::TableDimension> dimensions;
    for (const PivotDimension& each : built.dimensions) {
        tables::TableDimension& dimension = dimensions.emplace_back();
        dimension.label = each.label;
        for (const PivotGroup& group : each.groups) {
            dimension.groups.push_back({group.label, groupId(group.parent)});
        }
        for (const PivotCategory& category : each.categories) {
            dimension.categories.push_back({category.label, groupId(category.group), {}, {}, {}});
        }
    }
    if (!tables::placeCountOf(dimensions)) {
        for (tables::TableDimension& dimension : dimensions) dimension.categories.clear();
    }
    return dimensions;
}

tables::TableView viewOf(const PivotTable& built) {
    tables::TableView view;
    view.title = built.title;
    view.caption = built.caption;
    view.titleHidden = built.titleHidden;
    view.emptyLinesLeftOut = true;
    if (built.minDataColumnWidth) view.minColumnWidth = *built.minDataColumnWidth;
    if (built.maxDataColumnWidth) view.maxColumnWidth = *built.maxDataColumnWidth;
    std::vector<tables::DimensionId> ids(built.dimensions.size());
    for (std::size_t i = 0; i < ids.size(); ++i) ids[i] = static_cast<tables::DimensionId>(i);
    constexpr std::size_t index = 1;  // of the position
    std::stable_sort(ids.begin(), ids.end(), [&](tables::DimensionId left, tables::DimensionId right) {
        return built.dimensions[left].position[index] < built.dimensions[right].position[index];
    });
    for (const tables::DimensionId id : ids) {
        switch (built.dimensions[id].axis()) {
            case PivotAxis::row:
                view.rows.push_back(id);
                break;
            case PivotAxis::column:
                view.columns.push_back(id);
                break;
            case PivotAxis::layer:
                view.layers.push_back(id);
                break;
        }
    }
    return view;
}

tables::CellStyle styleOf(const PivotCellExtras& extras) {
    tables::CellStyle style;
    if (extras.bold) style.bold = true;
    style.color = colorOf(extras.color);
    style.background = colorOf(extras.background);
    return style;
}

void setCell(const PivotTable& built, const PivotCell& cell, tables::TableDataBuilder& data,
             tables::TableStyle& style) {
    if (cell.number) {
        data.setNumber(cell.place, *cell.number, countFormat);
        if (tables::numberText(*cell.number, countFormat) != cell.text) data.setShown(cell.place, cell.text);
    } else {
        data.setText(cell.place, cell.text);
    }
    if (cell.extras == 0) return;
    const PivotCellExtras& extras = built.extrasOf(cell);
    std::vector<tables::FootnoteId> footnotes;
    for (const std::string& note : extras.notes) footnotes.push_back(data.footnote(note));
    if (!footnotes.empty()) data.setFootnotes(cell.place, std::move(footnotes));
    style.setCell(cell.place, style.intern(styleOf(extras)), data.placeCount());
}

}  // namespace

std::optional<tables::Color> colorOf(std::string_view given) {
    constexpr std::size_t lengthOfTriple = 7;
    if (given.size() == lengthOfTriple && given.front() == '#') {
        std::uint32_t rgb = 0;
        const char* const end = given.data() + given.size();
        const auto read = std::from_chars(given.data() + 1, end, rgb, 16);
        return read.ec == std::errc() && read.ptr == end ? std::optional(tables::Color{rgb}) : std::nullopt;
    }
    std::string name;
    for (const char each : given) {
        if (each == '_') continue;
        name += each >= 'a' && each <= 'z' ? static_cast<char>(each - 'a' + 'A') : each;
    }
    const auto named = std::find_if(std::begin(namedColors), std::end(namedColors),
                                    [&](const NamedColor& each) { return each.name == name; });
    return named == std::end(namedColors) ? std::nullopt : std::optional(tables::Color{named->rgb});
}

tables::Table shownTable(const PivotTable& built) {
    tables::TableDataBuilder data(dimensionsOf(built));
    tables::TableStyle style;
    for (const PivotCell& cell : built.cells) {
        if (cell.place < data.placeCount()) setCell(built, cell, data, style);
    }
    return tables::makeTable(data.finish(), viewOf(built), std::move(style));
}

}  // namespace vexa
