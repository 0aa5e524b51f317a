#include "tests/unit/import/random_documents.h"

#include <algorithm>
#include <array>
#include <utility>

#include "frontend/import/pictures.h"
#include "tests/unit/import/import_samples.h"

namespace vexa::frontend {

namespace {

using tables::Area;
using tables::DimensionId;
using tables::Place;

constexpr std::size_t kDeepest = 3;

}  // namespace

std::string RandomDocuments::text() {
    static const std::array<const char*, 14> pieces{
        "Mean",         "N",  "a",    " ",    "\"",    "\\", "\n", "\xC3\xA4",
        "\xE5\xB9\xB3", "\t", "\x01", "</b>", "Total", "1.5"};
    std::string made;
    for (std::size_t left = below(4); left > 0; --left) made += pieces.at(below(pieces.size()));
    return made;
}

double RandomDocuments::number() {
    switch (below(5)) {
        case 0:
            return static_cast<double>(below(100)) - 50;
        case 1:
            return static_cast<double>(below(1'000'000)) / 1000;
        case 2:
            return 1e300 * static_cast<double>(below(1000));
        case 3:
            return -1e-9 / static_cast<double>(1 + below(1000));
        default:
            return std::uniform_real_distribution<double>(-1, 1)(random_);
    }
}

tables::DisplayFormat RandomDocuments::format() {
    static const std::array<const char*, 6> names{"F8.2", "COMMA12", "PCT5.1", "E9.2", "DATETIME", "N6"};
    return chance(2) ? tables::DisplayFormat() : *tables::parseFormat(names.at(below(names.size())));
}

tables::CellStyle RandomDocuments::style() {
    tables::CellStyle made;
    if (chance(2)) return made;
    if (chance(2)) made.bold = chance(2);
    if (chance(3)) made.italic = chance(2);
    if (chance(3)) made.underline = chance(2);
    if (chance(3)) made.font = "Serif";
    if (chance(3)) made.size = 6 + static_cast<double>(below(20)) / 2;
    if (chance(3)) made.color = tables::Color{static_cast<std::uint32_t>(below(0x1000000))};
    if (chance(3)) made.background = tables::Color{static_cast<std::uint32_t>(below(0x1000000))};
    return made;
}

std::vector<tables::FootnoteId> RandomDocuments::footnoteIds(std::size_t footnotes) {
    std::vector<tables::FootnoteId> ids;
    for (std::size_t i = 0; i < footnotes; ++i) {
        if (chance(3)) ids.push_back(static_cast<tables::FootnoteId>(i));
    }
    return ids;
}

void RandomDocuments::addGroups(tables::TableDimension& dimension, tables::GroupId parent, std::size_t depth,
                                std::size_t footnotes) {
    static const ImportSurroundings surroundings;
    for (std::size_t left = 1 + below(3); left > 0; --left) {
        if (depth < kDeepest && chance(4)) {
            const auto group = static_cast<tables::GroupId>(dimension.groups.size());
            dimension.groups.push_back({text(), parent});
            addGroups(dimension, group, depth + 1, footnotes);
            continue;
        }
        tables::TableCategory& category = dimension.categories.emplace_back();
        category.label = text();
        category.group = parent;
        category.role = chance(4) ? static_cast<tables::StatisticRole>(below(9))
                                  : surroundings.words.roleOf(category.label);
        category.format = chance(3) ? format() : tables::DisplayFormat();
        if (chance(4)) category.footnotes = footnoteIds(footnotes);
    }
}

tables::TableDimension RandomDocuments::dimension(std::size_t footnotes) {
    tables::TableDimension made;
    made.label = text();
    addGroups(made, tables::noGroup, 0, footnotes);
    return made;
}

void RandomDocuments::fill(tables::TableDataBuilder& builder, tables::TableStyle& style,
                           std::size_t footnotes) {
    const Place count = builder.placeCount();
    for (Place place = 0; place < count; ++place) {
        if (chance(8)) style.setCell(place, style.intern(this->style()), count);
        if (chance(4)) continue;
        if (chance(4)) {
            builder.setText(place, text());
        } else {
            builder.setNumber(place, number(), chance(5) ? format() : tables::DisplayFormat());
        }
        if (chance(8)) builder.setShown(place, text());
        if (footnotes > 0 && chance(8)) builder.setFootnotes(place, {0});
    }
}

void RandomDocuments::decorate(const std::vector<tables::TableDimension>& dimensions, tables::TableView& view,
                               tables::TableStyle& style) {
    view.dimensions.resize(dimensions.size());
    for (DimensionId id = 0; id < dimensions.size(); ++id) {
        const std::size_t count = dimensions[id].categories.size();
        view.dimensions[id].labelHidden = chance(4);
        const auto hidden = static_cast<tables::CategoryId>(below(count));
        if (chance(4)) {
            view.dimensions[id].hidden.resize(count);
            view.dimensions[id].hidden[hidden] = true;
        }
        const auto category = static_cast<tables::CategoryId>(below(count));
        if (chance(3)) style.setCategory(id, category, style.intern(this->style()));
        if (chance(4)) style.setWidth(id, category, 10 + static_cast<double>(below(100)));
        if (!dimensions[id].groups.empty() && chance(2)) {
            style.setGroup(id, static_cast<tables::GroupId>(below(dimensions[id].groups.size())),
                           style.intern(this->style()));
        }
    }
    for (const DimensionId id : view.layers) {
        view.dimensions[id].shown = static_cast<tables::CategoryId>(below(dimensions[id].categories.size()));
    }
    for (const Area area : {Area::title, Area::caption, Area::footnotes})
        style.setArea(area, style.intern(this->style()));
}

/// What modifications do: other orders, a format for all, formats of cells, styles of areas.
void RandomDocuments::arrange(tables::TableView& view, tables::TableStyle& style,
                              const tables::TableData& data) {
    for (DimensionId id = 0; id < data.dimensions().size(); ++id) {
        if (!data.dimensions()[id].groups.empty() || chance(2)) continue;
        view.dimensions[id].order.resize(data.dimensions()[id].categories.size());
        for (std::size_t i = 0; i < view.dimensions[id].order.size(); ++i) {
            view.dimensions[id].order[i] = static_cast<tables::CategoryId>(i);
        }
        std::shuffle(view.dimensions[id].order.begin(), view.dimensions[id].order.end(), random_);
    }
    if (chance(2)) std::swap(view.rows, view.columns);
    std::reverse(view.rows.begin(), view.rows.end());
    if (chance(3)) style.setFormat(format());
    for (const Area area : {Area::data, Area::rowLabels, Area::columnLabels, Area::layers}) {
        if (chance(4)) style.setArea(area, style.intern(this->style()));
    }
    for (Place place = 0; place < data.placeCount(); ++place) {
        if (chance(8)) style.setCellFormat(place, format(), data.placeCount());
    }
}

tables::Table RandomDocuments::table(bool arranged) {
    const std::size_t footnotes = below(3);
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < footnotes; ++i) texts.push_back(text() + std::to_string(i));
    tables::TableView view;
    std::vector<tables::TableDimension> dimensions;
    for (auto* const axis : {&view.layers, &view.rows, &view.columns}) {
        for (std::size_t left = chance(6) ? 0 : 1 + below(2); left > 0; --left) {
            axis->push_back(static_cast<DimensionId>(dimensions.size()));
            dimensions.push_back(dimension(footnotes));
        }
    }
    tables::TableStyle style;
    decorate(dimensions, view, style);
    view.title = text();
    view.caption = text();
    view.corner = text();
    view.titleHidden = chance(4);
    if (chance(4)) view.layerPrinting = static_cast<tables::LayerPrinting>(below(2));
    if (chance(4)) view.minColumnWidth = 10;
    if (chance(4)) view.maxColumnWidth = 99.5;
    if (chance(3)) style.setLook(FewLooks().find("banded").look);
    tables::TableDataBuilder builder(std::move(dimensions), std::move(texts));
    fill(builder, style, footnotes);
    const auto data = builder.finish();
    const bool hasSeveral = view.rows.size() > 1 || view.columns.size() > 1 || view.layers.size() > 1;
    view.emptyLinesLeftOut = chance(2) && hasSeveral && data->filledCount() < data->placeCount();
    if (arranged) arrange(view, style, *data);
    return tables::makeTable(data, std::move(view), std::move(style));
}

ItemContent RandomDocuments::grid() {
    tables::FlatTable made;
    made.title = text();
    made.caption = text();
    const std::size_t rows = below(4);
    if (rows > 0) made.columns = 1 + below(3);
    made.headerRows = below(rows + 1);
    made.headerColumns = below(made.columns + 1);
    for (std::size_t i = 0; i < rows * made.columns; ++i) {
        made.cells.push_back({text(), 0});
        tables::CellStyle own = chance(4) ? style() : tables::CellStyle();
        const auto found = std::find(made.styles.begin(), made.styles.end(), own);
        made.cells.back().style = static_cast<tables::StyleId>(found - made.styles.begin());
        if (found == made.styles.end()) made.styles.push_back(std::move(own));
    }
    return GridContent{std::make_shared<const tables::FlatTable>(std::move(made))};
}

ItemContent RandomDocuments::content(bool arranged) {
    std::string reason;
    const auto svg = readSvg(kSampleSvg, reason);
    const auto png = readPng(samplePng(8, 4), reason);
    const auto shown = [&] {
        return ShownPicture{chance(2) ? svg : png, text(),
                            chance(3) ? std::vector<std::string>{text()} : std::vector<std::string>(),
                            text()};
    };
    switch (below(12)) {
        case 0:
            return HeadingContent{{text(), style()}};
        case 1:
            return ChartContent{shown()};
        case 2:
            return TextContent{{text(), style()}};
        case 3:
            return LogContent{text()};
        case 4:
            return WarningContent{static_cast<int>(2 + below(4)), text()};
        case 5:
            return NotesContent{{{static_cast<int>(below(3)), text(), text()}, {0, "", ""}}};
        case 6:
            return PageTitleContent{{text(), style()}};
        case 7:
            return TreeContent{shown()};
        case 8:
            return grid();
        case 9:
            return UnknownContent{
                "map", std::make_shared<const std::string>(chance(2) ? R"({"a":[1,{"b":"c"}]})" : "<map/>"),
                static_cast<int>(below(2)) * 7};
        default:
            return TableContent{table(arranged)};
    }
}

Item RandomDocuments::item(bool arranged) {
    Item made;
    made.content = content(arranged);
    made.label = text();
    made.command = text();
    made.subtype = text();
    made.visible = !chance(4);
    made.pageBreakBefore = chance(5);
    if (chance(4)) made.width = 1 + static_cast<double>(below(1000)) / 4;
    if (chance(4)) made.height = 1 + static_cast<double>(below(1000)) / 4;
    return made;
}

void RandomDocuments::add(Outline& outline, ItemId under, std::size_t depth, bool arranged) {
    Item made = item(arranged);
    if (depth >= kDeepest || !chance(3)) {
        outline.add(std::move(made), under);
        return;
    }
    const std::size_t children = 1 + below(3);
    if (chance(2)) {
        made.content = HeaderContent();
    } else {
        made.content = ModelContent{below(children),
                                    chance(2) ? std::optional(tables::LayerPrinting::all) : std::nullopt};
    }
    const ItemId id = outline.add(std::move(made), under);
    for (std::size_t i = 0; i < children; ++i) add(outline, id, depth + 1, arranged);
}

Outline RandomDocuments::document(std::size_t items, bool arranged) {
    Outline outline;
    for (std::size_t i = 0; i < items; ++i) add(outline, 0, 0, arranged);
    return outline;
}

}  // namespace vexa::frontend
