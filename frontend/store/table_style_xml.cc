// Styles, widths and formats of tables. Styles are numbered in the order of their use, so that equal tables
// give equal bytes whatever was set and taken back before.

#include <algorithm>
#include <array>
#include <charconv>
#include <unordered_map>

#include "frontend/looks/look_words.h"
#include "frontend/store/cell_text.h"
#include "frontend/store/style_xml.h"
#include "frontend/store/table_xml.h"

namespace vexa::frontend {
namespace {

using tables::Area;
using tables::areaCount;
using tables::CellStyle;
using tables::DisplayFormat;
using tables::parseFormat;
using tables::Place;
using tables::StyleId;
using tables::Table;
using tables::TableData;
using tables::TableDimension;
using tables::TableStyle;

class StyleWriter {
  public:
    StyleWriter(const Table& table, XmlWriter& xml, WritingContext& context)
        : style_(*table.style), data_(*table.data), xml_(xml), context_(context) {}

    void write() {
        numberStyles();
        for (const CellStyle* const style : styles_) {
            xml_.begin("style");
            writeStyle(*style, xml_);
            xml_.end();
        }
        for (std::size_t i = 0; i < areaCount; ++i) {
            const std::size_t number = numberOf(style_.area(static_cast<Area>(i)));
            if (number != 0)
                xml_.begin("area").attribute("area", kAreaWords[i]).attribute("style", number).end();
        }
        writeLabels();
        writeCellStyles();
        writeCellFormats();
    }

  private:
    void use(StyleId id) {
        if (id == 0 || numbers_.contains(id)) return;
        const CellStyle& style = style_.style(id);
        if (style.isEmpty()) {
            numbers_[id] = 0;
            return;
        }
        const auto same = std::find_if(styles_.begin(), styles_.end(),
                                       [&](const CellStyle* known) { return *known == style; });
        numbers_[id] = static_cast<std::size_t>(same - styles_.begin()) + 1;
        if (same == styles_.end()) styles_.push_back(&style);
    }

    void numberStyles() {
        for (std::size_t i = 0; i < areaCount; ++i) use(style_.area(static_cast<Area>(i)));
        forEachLabel([this](const char*, std::uint32_t, std::uint32_t, StyleId id, std::optional<double>) {
            use(id);
        });
        style_.cells().forEach([this](Place place, StyleId id) { cells_.push_back({place, 1, id}); });
        std::sort(cells_.begin(), cells_.end(),
                  [](const PlaceRun& left, const PlaceRun& right) { return left.place < right.place; });
        for (const PlaceRun& cell : cells_) use(cell.value);
    }

    [[nodiscard]] std::size_t numberOf(StyleId id) const { return id == 0 ? 0 : numbers_.at(id); }

    template <typename Action>
    void forEachLabel(const Action& action) const {
        for (std::uint32_t dimension = 0; dimension < data_.dimensions().size(); ++dimension) {
            const TableDimension& labels = data_.dimensions()[dimension];
            for (std::uint32_t i = 0; i < labels.categories.size(); ++i) {
                action("category", dimension, i, style_.category(dimension, i), style_.width(dimension, i));
            }
            for (std::uint32_t i = 0; i < labels.groups.size(); ++i) {
                action("group", dimension, i, style_.group(dimension, i), std::nullopt);
            }
        }
    }

    void writeLabels() {
        forEachLabel([this](const char* kind, std::uint32_t dimension, std::uint32_t index, StyleId id,
                            std::optional<double> width) {
            const std::size_t number = numberOf(id);
            if (number == 0 && !width) return;
            xml_.begin("label")
                .attribute("dimension", std::size_t{dimension})
                .attribute(kind, std::size_t{index});
            if (number != 0) xml_.attribute("style", number);
            writeNumber("width", width, xml_);
            xml_.end();
        });
    }

    void writeCellStyles() {
        for (PlaceRun& cell : cells_) cell.value = static_cast<std::uint32_t>(numberOf(cell.value));
        std::erase_if(cells_, [](const PlaceRun& cell) { return cell.value == 0; });
        if (cells_.empty()) return;
        context_.memory += memoryOfPlaceValues(data_.placeCount(), cells_.size(), sizeof(StyleId));
        xml_.begin("cellStyles").raw(writePlaceRuns(std::move(cells_))).end();
    }

    void writeCellFormats() {
        std::vector<DisplayFormat> formats;
        std::vector<std::pair<Place, DisplayFormat>> given;
        style_.cellFormats().forEach(
            [&](Place place, DisplayFormat format) { given.emplace_back(place, format); });
        std::sort(given.begin(), given.end(),
                  [](const auto& left, const auto& right) { return left.first < right.first; });
        std::vector<PlaceRun> values;
        for (const auto& [place, format] : given) {
            const auto found = std::find(formats.begin(), formats.end(), format);
            values.push_back({place, 1, static_cast<std::uint32_t>(found - formats.begin()) + 1});
            if (found == formats.end()) formats.push_back(format);
        }
        if (values.empty()) return;
        context_.memory += memoryOfPlaceValues(data_.placeCount(), values.size(), sizeof(DisplayFormat));
        xml_.begin("cellFormats").attribute("formats", formatsText(formats));
        xml_.raw(writePlaceRuns(std::move(values))).end();
    }

    const TableStyle& style_;
    const TableData& data_;
    XmlWriter& xml_;
    WritingContext& context_;
    std::vector<const CellStyle*> styles_;
    std::unordered_map<StyleId, std::size_t> numbers_;
    std::vector<PlaceRun> cells_;
};

class StyleReader {
  public:
    StyleReader(const TableData& data, TableStyle& style, ReadingContext& context)
        : data_(data), style_(style), context_(context) {}

    bool read(const pugi::xml_node& node) {
        constexpr std::array<const char*, 5> order{"style", "area", "label", "cellStyles", "cellFormats"};
        while (place_ < order.size() && !isNamed(node, order[place_])) ++place_;
        if (node.first_child() || place_ == order.size()) return false;
        if (isNamed(node, "style")) return readOne(node);
        if (isNamed(node, "area")) return readArea(node);
        if (isNamed(node, "label")) return readLabel(node);
        if (isNamed(node, "cellStyles")) return readCellStyles(node);
        return isNamed(node, "cellFormats") && readCellFormats(node);
    }

  private:
    // Styles stand before what refers to them.
    bool readOne(const pugi::xml_node& node) {
        CellStyle style;
        ElementReader element(node);
        readStyle(element, style);
        if (!element.isRead() || !context_.keep(sizeof style)) return false;
        ids_.push_back(style_.intern(style));
        return true;
    }

    ElementReader& readReference(const pugi::xml_node& node, ElementReader& element,
                                 std::size_t& number) const {
        element.whole("style", number);
        element.require(number != 0 || !node.attribute("style"), "style", "a whole number from 1"_text);
        return element.require(number <= ids_.size());
    }
    [[nodiscard]] StyleId idOf(std::size_t number) const { return number == 0 ? 0 : ids_[number - 1]; }

    bool readArea(const pugi::xml_node& node) {
        ElementReader element(node);
        Area area{};
        std::size_t number = 0;
        element.word("area", kAreaWords, area);
        if (!readReference(node, element, number).isRead() || number == 0 || !node.attribute("area")) {
            return false;
        }
        const std::uint32_t bit = 1U << static_cast<unsigned>(area);
        if ((areas_ & bit) != 0) return false;
        areas_ |= bit;
        style_.setArea(area, idOf(number));
        return true;
    }

    bool readLabel(const pugi::xml_node& node) {
        ElementReader element(node);
        constexpr std::uint32_t none = UINT32_MAX;
        std::uint32_t dimension = none;
        std::uint32_t category = none;
        std::uint32_t group = none;
        std::size_t number = 0;
        std::optional<double> width;
        element.whole("dimension", dimension).whole("category", category).whole("group", group);
        element.number("width", width);
        if (!readReference(node, element, number).isRead() || dimension >= data_.dimensions().size())
            return false;
        const TableDimension& labels = data_.dimensions()[dimension];
        if (category != none) {
            if (group != none || category >= labels.categories.size()) return false;
            style_.setCategory(dimension, category, idOf(number));
            style_.setWidth(dimension, category, width);
            return true;
        }
        if (width || group >= labels.groups.size()) return false;
        style_.setGroup(dimension, group, idOf(number));
        return true;
    }

    bool readRuns(std::string_view tokens, std::size_t most, std::size_t bytes, std::vector<PlaceRun>& runs) {
        if (!readPlaceRuns(tokens, data_.placeCount(), static_cast<std::uint32_t>(most), runs)) return false;
        std::uint64_t count = 0;
        for (const PlaceRun& run : runs) count += run.count;
        return context_.keep(memoryOfPlaceValues(data_.placeCount(), count, bytes));
    }

    bool readCellStyles(const pugi::xml_node& node) {
        ElementReader element(node);
        std::string_view tokens;
        std::vector<PlaceRun> runs;
        if (!element.plainContent(tokens).isRead() || !style_.cells().isEmpty() ||
            !readRuns(tokens, ids_.size(), sizeof(StyleId), runs)) {
            return false;
        }
        for (const PlaceRun& run : runs) {
            for (Place i = 0; i < run.count; ++i) {
                style_.setCell(run.place + i, idOf(run.value), data_.placeCount());
            }
        }
        return true;
    }

    bool readCellFormats(const pugi::xml_node& node) {
        ElementReader element(node);
        std::string text;
        std::string_view tokens;
        std::vector<DisplayFormat> formats;
        std::vector<PlaceRun> runs;
        if (!element.text("formats", text).plainContent(tokens).isRead() || !readFormats(text, formats) ||
            !style_.cellFormats().isEmpty() ||
            !readRuns(tokens, formats.size(), sizeof(DisplayFormat), runs)) {
            return false;
        }
        for (const PlaceRun& run : runs) {
            for (Place i = 0; i < run.count; ++i) {
                style_.setCellFormat(run.place + i, formats[run.value - 1], data_.placeCount());
            }
        }
        return true;
    }

    const TableData& data_;
    TableStyle& style_;
    ReadingContext& context_;
    std::size_t place_ = 0;    // in the order of the elements
    std::uint32_t areas_ = 0;  // those that have had their style
    std::vector<StyleId> ids_;
};

}  // namespace

void writeTableStyle(const Table& table, XmlWriter& xml, WritingContext& context) {
    StyleWriter(table, xml, context).write();
}

bool readTableStyle(pugi::xml_node first, const TableData& data, TableStyle& style, ReadingContext& context) {
    StyleReader reader(data, style, context);
    for (pugi::xml_node node = first; node; node = node.next_sibling()) {
        if (!reader.read(node)) return false;
    }
    return true;
}

bool readFormats(std::string_view text, std::vector<DisplayFormat>& formats) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        const std::optional<DisplayFormat> format = parseFormat(text.substr(0, end));
        if (!format) return false;
        formats.push_back(*format);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return true;
}

}  // namespace vexa::frontend
