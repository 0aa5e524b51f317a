#include "tests/unit/frontend/random_documents.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>
#include <random>
#include <string>
#include <utility>

namespace vexa::frontend {
namespace {

using namespace tables;

class Maker {
  public:
    explicit Maker(std::uint32_t seed) : random_(seed) {}

    std::unique_ptr<ViewerDocument> document() {
        auto made = std::make_unique<ViewerDocument>();
        made->setName(maybe(2) ? text() : "");
        addItems(*made, 0, below(6), 0);
        made->setModified(false);
        return made;
    }

    Table table() {
        std::vector<TableDimension> dimensions;
        const std::size_t footnotes = below(4);
        std::size_t places = 1;
        for (std::size_t i = below(5); i > 0; --i) {
            dimensions.push_back(dimension(places > 500 ? 2 : 9, footnotes));
            places *= std::max<std::size_t>(dimensions.back().categories.size(), 1);
        }
        TableView shown = view(dimensions);
        std::vector<std::string> notes;
        for (std::size_t i = 0; i < footnotes; ++i) notes.push_back(text());
        TableDataBuilder builder(std::move(dimensions), std::move(notes));
        fill(builder, footnotes);
        auto data = builder.finish();
        TableStyle made = style(*data);
        return makeTable(std::move(data), std::move(shown), std::move(made));
    }

  private:
    std::uint32_t below(std::uint32_t count) { return static_cast<std::uint32_t>(random_() % count); }
    /// One time in `count`.
    bool maybe(std::uint32_t count) { return below(count) == 0; }

    std::string text() {
        static const std::array<std::string, 12> pieces{"",
                                                        "a",
                                                        "Total",
                                                        "\xc3\xa4rger",
                                                        "<&>\"'",
                                                        " blank ",
                                                        std::string("\0\x01", 2),
                                                        "\\41",
                                                        "\xff\xfe",
                                                        "line\r\n\tend",
                                                        "\xf0\x9f\x98\x80",
                                                        "#3 *5 1:2!4"};
        std::string made;
        for (std::uint32_t i = below(4); i > 0; --i) made += pieces[below(pieces.size())];
        return made;
    }

    double number() {
        static const std::array<double, 11> odd{0,
                                                -0.0,
                                                1,
                                                -12.5,
                                                5e-324,
                                                1.7976931348623157e308,
                                                1.0 / 3,
                                                1e21,
                                                std::numeric_limits<double>::infinity(),
                                                -std::numeric_limits<double>::infinity(),
                                                std::numeric_limits<double>::quiet_NaN()};
        return maybe(3) ? odd[below(odd.size())] : static_cast<double>(below(1'000'000)) / 1000;
    }

    double points() { return 1 + static_cast<double>(below(4000)) / 8; }
    std::optional<double> maybePoints() { return maybe(4) ? std::optional(points()) : std::nullopt; }
    Color color() { return Color{below(0x1000000)}; }

    DisplayFormat format() {
        if (maybe(2)) return {};
        const auto kind = static_cast<FormatKind>(below(14));
        if (kind == FormatKind::none || kind >= FormatKind::date) return {kind, 0, 0};
        const bool hasDecimals = kind != FormatKind::zeroPadded;
        return {kind, static_cast<std::uint8_t>(20 + below(20)),
                static_cast<std::uint8_t>(hasDecimals ? below(17) : 0)};
    }

    CellStyle cellStyle() {
        CellStyle style;
        if (maybe(2)) style.bold = maybe(2);
        if (maybe(3)) style.italic = maybe(2);
        if (maybe(3)) style.underline = maybe(2);
        if (maybe(4)) style.font = text();
        if (maybe(4)) style.size = points();
        if (maybe(4)) style.color = color();
        if (maybe(4)) style.background = color();
        return style;
    }

    std::vector<FootnoteId> someFootnotes(std::size_t count) {
        std::vector<FootnoteId> some;
        for (std::size_t i = count > 0 ? below(3) : 0; i > 0; --i) {
            some.push_back(below(static_cast<std::uint32_t>(count)));
        }
        return some;
    }

    TableDimension dimension(std::uint32_t most, std::size_t footnotes) {
        TableDimension made{text(), {}, {}};
        for (std::uint32_t i = 0, count = below(4); i < count; ++i) {
            made.groups.push_back({text(), i > 0 && maybe(2) ? below(i) : noGroup});
        }
        // Seldom none at all: such a table has no places.
        for (std::uint32_t i = maybe(30) ? 0 : 1 + below(most); i > 0; --i) {
            const auto groups = static_cast<std::uint32_t>(made.groups.size());
            made.categories.push_back({text(), groups > 0 && maybe(2) ? below(groups) : noGroup,
                                       static_cast<StatisticRole>(maybe(2) ? below(9) : 0), format(),
                                       someFootnotes(footnotes)});
        }
        return made;
    }

    void shuffle(std::vector<std::uint32_t>& numbers) {
        for (std::size_t i = numbers.size(); i > 1; --i) {
            std::swap(numbers[i - 1], numbers[below(static_cast<std::uint32_t>(i))]);
        }
    }

    TableView view(const std::vector<TableDimension>& dimensions) {
        TableView made{text(), text(),   text(), maybe(3),      {},           {}, {},
                       {},     maybe(2), {},     maybePoints(), maybePoints()};
        if (maybe(3)) made.layerPrinting = maybe(2) ? LayerPrinting::all : LayerPrinting::visible;
        std::vector<DimensionId> ids(dimensions.size());
        std::iota(ids.begin(), ids.end(), 0U);
        shuffle(ids);
        for (const DimensionId id : ids) {
            std::vector<DimensionId>* const axes[] = {&made.rows, &made.columns, &made.layers};
            axes[below(3)]->push_back(id);
        }
        for (const TableDimension& dimension : dimensions) {
            DimensionView& each = made.dimensions.emplace_back();
            const std::size_t count = dimension.categories.size();
            each.labelHidden = maybe(3);
            if (maybe(3)) {
                each.order.resize(count);
                std::iota(each.order.begin(), each.order.end(), 0U);
                shuffle(each.order);
            }
            if (maybe(3)) {
                for (std::size_t i = 0; i < count; ++i) each.hidden.push_back(maybe(3));
            }
            if (count > 0) each.shown = below(static_cast<std::uint32_t>(count));
        }
        return made;
    }

    void fill(TableDataBuilder& builder, std::size_t footnotes) {
        const Place places = builder.placeCount();
        const std::uint32_t kept = 1 + below(4);
        for (Place place = 0; place < places; ++place) {
            if (!maybe(kept)) continue;
            if (maybe(4)) {
                builder.setText(place, text());
            } else {
                builder.setNumber(place, number(), format());
            }
            if (maybe(8)) builder.setShown(place, text());
            if (maybe(8)) builder.setFootnotes(place, someFootnotes(footnotes));
        }
    }

    std::shared_ptr<const TableLook> look() {
        auto made = std::make_shared<TableLook>(*plainLook());
        made->name = "look " + std::to_string(below(3));
        for (AreaLook& area : made->areas) {
            if (!maybe(3)) continue;
            area = {"Serif",
                    points() / 4 + 1,
                    maybe(2),
                    maybe(2),
                    maybe(2),
                    color(),
                    {},
                    HorizontalAlign(below(4)),
                    VerticalAlign(below(3)),
                    points() / 8,
                    points() / 8,
                    1,
                    2};
            if (maybe(2)) area.background = color();
        }
        for (BorderLine& line : made->borders) {
            if (maybe(3)) line = {static_cast<LineStyle>(below(7)), color()};
        }
        if (maybe(2)) made->banding = {1 + below(5), color(), std::nullopt, maybe(2)};
        made->minColumnWidth = maybePoints();
        made->maxLabelWidth = maybePoints();
        return made;
    }

    TableStyle style(const TableData& data) {
        TableStyle made;
        if (maybe(3)) made.setLook(look());
        if (maybe(4)) made.setFormat(format());
        std::vector<StyleId> ids{0};
        for (std::uint32_t i = below(4); i > 0; --i) ids.push_back(made.intern(cellStyle()));
        const auto some = [&] { return ids[below(static_cast<std::uint32_t>(ids.size()))]; };
        for (std::size_t i = 0; i < areaCount; ++i) {
            if (maybe(4)) made.setArea(static_cast<Area>(i), some());
        }
        for (DimensionId id = 0; id < data.dimensions().size(); ++id) {
            for (std::uint32_t i = 0; i < data.dimensions()[id].categories.size(); ++i) {
                if (maybe(5)) made.setCategory(id, i, some());
                if (maybe(5)) made.setWidth(id, i, maybePoints());
            }
            for (std::uint32_t i = 0; i < data.dimensions()[id].groups.size(); ++i) {
                if (maybe(3)) made.setGroup(id, i, some());
            }
        }
        for (Place place = 0; place < data.placeCount(); ++place) {
            if (maybe(6)) made.setCell(place, some(), data.placeCount());
            if (maybe(9)) made.setCellFormat(place, format(), data.placeCount());
        }
        return made;
    }

    StyledText styledText() { return {text(), maybe(2) ? cellStyle() : CellStyle()}; }

    template <typename Shown>
    Shown picture() {
        static const std::array<std::string, 3> bytes{"", "<svg/>",
                                                      std::string("\x89PNG\r\n\x1a\n\0\xff", 10)};
        Shown made;
        made.picture = std::make_shared<const Picture>(Picture{
            maybe(2) ? PictureForm::svg : PictureForm::png, bytes[below(bytes.size())], points(), points()});
        made.alternativeText = text();
        made.styleSheet = text();
        for (std::uint32_t i = below(3); i > 0; --i) made.templates.push_back(text());
        return made;
    }

    GridContent grid() {
        auto made = std::make_shared<FlatTable>();
        made->title = text();
        made->caption = text();
        made->columns = below(4);
        const std::size_t rows = made->columns == 0 ? 0 : below(5);
        made->headerRows = below(static_cast<std::uint32_t>(rows) + 1);
        made->headerColumns = below(static_cast<std::uint32_t>(made->columns) + 1);
        for (std::uint32_t i = below(3); i > 0; --i) made->styles.push_back(cellStyle());
        for (std::size_t i = 0; i < rows * made->columns; ++i) {
            made->cells.push_back({text(), below(static_cast<std::uint32_t>(made->styles.size()))});
        }
        return {std::move(made)};
    }

    NotesContent notes() {
        NotesContent made;
        for (std::uint32_t i = below(4); i > 0; --i) {
            made.lines.push_back({static_cast<int>(below(9)) - 4, text(), text()});
        }
        return made;
    }

    UnknownContent unknown() {
        const bool later = maybe(2);
        return {later ? "chart" : "hologram", std::make_shared<const std::string>(text()),
                later ? 1 + static_cast<int>(below(9)) : 0};
    }

    ItemContent content(ItemType type) {
        switch (type) {
            case ItemType::header:
                return HeaderContent{};
            case ItemType::heading:
                return HeadingContent{styledText()};
            case ItemType::table:
                return TableContent{table()};
            case ItemType::chart:
                return picture<ChartContent>();
            case ItemType::text:
                return TextContent{styledText()};
            case ItemType::log:
                return LogContent{text()};
            case ItemType::warning:
                return WarningContent{static_cast<int>(below(9)), text()};
            case ItemType::notes:
                return notes();
            case ItemType::pageTitle:
                return PageTitleContent{styledText()};
            case ItemType::model:
                return ModelContent{0, maybe(2) ? std::optional(LayerPrinting::all) : std::nullopt};
            case ItemType::tree:
                return picture<TreeContent>();
            case ItemType::grid:
                return grid();
            case ItemType::unknown:
                break;
        }
        return unknown();
    }

    void addItems(ViewerDocument& document, ItemId under, std::uint32_t count, std::size_t depth) {
        for (; count > 0; --count) {
            const auto type = static_cast<ItemType>(below(itemTypeCount));
            Item item{text(),   text(),        text(),        !maybe(4),
                      maybe(4), maybePoints(), maybePoints(), content(type)};
            const ItemId id = document.add(std::move(item), under);
            if (!holdsItems(type) || depth > 4) continue;
            const std::uint32_t views = below(4);
            addItems(document, id, views, depth + 1);
            if (type == ItemType::model && views > 0) {
                std::get<ModelContent>(document.change(id).content).shown = below(views);
            }
        }
    }

    std::mt19937 random_;
};

}  // namespace

std::unique_ptr<ViewerDocument> randomDocument(std::uint32_t seed) { return Maker(seed).document(); }

Table randomTable(std::uint32_t seed) { return Maker(seed).table(); }

}  // namespace vexa::frontend
