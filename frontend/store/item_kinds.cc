#include "frontend/store/item_kinds.h"

#include <algorithm>
#include <memory>
#include <type_traits>
#include <utility>

#include "frontend/store/style_xml.h"
#include "frontend/store/table_xml.h"

namespace vexa::frontend {
namespace {

using Node = pugi::xml_node;

void writeHeader(const HeaderContent& /*header*/, XmlWriter& /*xml*/, WritingContext& /*context*/) {}

bool readHeader(const Node& /*node*/, ElementReader& /*element*/, HeaderContent& /*header*/,
                ReadingContext& /*context*/) {
    return true;
}

void writeModel(const ModelContent& model, XmlWriter& xml, WritingContext& /*context*/) {
    if (model.shown != 0) xml.attribute("shown", model.shown + 1);
    if (model.viewPrinting) {
        xml.attribute("printViews", layerPrintingWords[static_cast<std::size_t>(*model.viewPrinting)]);
    }
}

bool readModel(const Node& /*node*/, ElementReader& element, ModelContent& model,
               ReadingContext& /*context*/) {
    std::size_t shown = 1;
    element.whole("shown", shown)
        .word("printViews", layerPrintingWords, model.viewPrinting)
        .require(shown > 0);
    model.shown = shown - 1;
    return true;
}

template <typename Styled, const char* name>
void writeStyled(const Styled& styled, XmlWriter& xml, WritingContext& /*context*/) {
    xml.begin(name);
    writeStyle(styled.style, xml);
    xml.text(styled.text).end();
}

template <typename Styled>
bool readStyled(const Node& /*node*/, ElementReader& element, Styled& styled, ReadingContext& /*context*/) {
    readStyle(element, styled.style);
    element.content(styled.text);
    return true;
}

void writeLog(const LogContent& log, XmlWriter& xml, WritingContext& /*context*/) {
    xml.begin("log").text(log.text).end();
}

bool readLog(const Node& /*node*/, ElementReader& element, LogContent& log, ReadingContext& /*context*/) {
    element.content(log.text);
    return true;
}

void writeWarning(const WarningContent& warning, XmlWriter& xml, WritingContext& /*context*/) {
    xml.begin("warning").attribute("level", warning.level).text(warning.text).end();
}

bool readWarning(const Node& /*node*/, ElementReader& element, WarningContent& warning,
                 ReadingContext& /*context*/) {
    element.whole("level", warning.level).content(warning.text);
    return true;
}

void writeNotes(const NotesContent& notes, XmlWriter& xml, WritingContext& context) {
    xml.begin("notes");
    for (const NoteLine& line : notes.lines) {
        xml.begin("line").attribute("level", line.level).optional("label", line.label).text(line.value).end();
    }
    xml.end();
    context.memory += notes.lines.size() * sizeof(NoteLine);
}

bool readNotes(const Node& root, ElementReader& /*element*/, NotesContent& notes, ReadingContext& context) {
    for (const Node node : root.children()) {
        NoteLine& line = notes.lines.emplace_back();
        ElementReader element(node);
        element.whole("level", line.level).text("label", line.label).content(line.value);
        if (!isNamed(node, "line") || !element.isRead()) return false;
    }
    return context.keep(notes.lines.size() * sizeof(NoteLine));
}

void writeTableContent(const TableContent& content, XmlWriter& xml, WritingContext& context) {
    writeTable(content.table, xml, context);
}

bool readTableContent(const Node& node, ElementReader& element, TableContent& content,
                      ReadingContext& context) {
    return readTable(node, element, content.table, context);
}

void writeGridContent(const GridContent& content, XmlWriter& xml, WritingContext& context) {
    writeGrid(*content.grid, xml, context);
}

bool readGridContent(const Node& node, ElementReader& element, GridContent& content,
                     ReadingContext& context) {
    auto grid = std::make_shared<tables::FlatTable>();
    const bool ok = readGrid(node, element, *grid, context);
    content.grid = std::move(grid);
    return ok;
}

template <typename Shown, const char* name>
void writePicture(const Shown& shown, XmlWriter& xml, WritingContext& context) {
    xml.begin(name);
    writeNumber("width", shown.picture->width, xml);
    writeNumber("height", shown.picture->height, xml);
    xml.optional("alternativeText", shown.alternativeText).optional("styleSheet", shown.styleSheet);
    for (const std::string& text : shown.templates) xml.element("template", text);
    xml.end();
    context.memory += shown.picture->bytes.size();
}

template <typename Shown>
bool readPicture(const Node& root, ElementReader& element, Shown& shown, ReadingContext& context) {
    if (context.picture == nullptr) return false;
    element.number("width", context.picture->width).number("height", context.picture->height);
    element.text("alternativeText", shown.alternativeText).text("styleSheet", shown.styleSheet);
    for (const Node node : root.children()) {
        ElementReader child(node);
        if (!isNamed(node, "template") || !child.content(shown.templates.emplace_back()).isRead())
            return false;
    }
    shown.picture = std::move(context.picture);
    return true;
}

void writeUnknown(const UnknownContent& unknown, XmlWriter& xml, WritingContext& /*context*/) {
    // A type that is known here must not be taken for what this version means by it.
    const bool needs = unknown.neededVersion != 0 || itemTypeOf(unknown.type) != ItemType::unknown;
    if (needs) xml.attribute("needs", std::max(unknown.neededVersion, 1));
}

bool readUnknown(const Node& node, ElementReader& element, UnknownContent& unknown,
                 ReadingContext& /*context*/) {
    element.text("type", unknown.type).whole("needs", unknown.neededVersion);
    element.require(unknown.neededVersion > 0 || !node.attribute("needs"), "needs",
                    "a whole number from 1"_text);
    return true;
}

template <typename Content, typename... All>
constexpr std::size_t indexAmong(const std::variant<All...>* /*all*/) {
    constexpr std::array<bool, sizeof...(All)> same{std::is_same_v<Content, All>...};
    std::size_t index = 0;
    while (!same[index]) ++index;
    return index;
}

/// The row of the type whose content `writer` and `reader` take.
template <typename Content, auto writer, auto reader>
constexpr ItemKind row(ItemStorage storage) {
    return {static_cast<ItemType>(indexAmong<Content>(static_cast<const ItemContent*>(nullptr))), storage,
            [](const ItemContent& content, XmlWriter& xml, WritingContext& context) {
                writer(std::get<Content>(content), xml, context);
            },
            [](const Node& node, ElementReader& element, ItemContent& content, ReadingContext& context) {
                return reader(node, element, content.emplace<Content>(), context);
            }};
}

constexpr char headingName[] = "heading";
constexpr char textName[] = "text";
constexpr char pageTitleName[] = "pageTitle";
constexpr char chartName[] = "chart";
constexpr char treeName[] = "tree";

constexpr std::array<ItemKind, itemTypeCount> kinds{{
    row<HeaderContent, writeHeader, readHeader>(ItemStorage::manifest),
    row<HeadingContent, writeStyled<HeadingContent, headingName>, readStyled<HeadingContent>>(
        ItemStorage::entry),
    row<TableContent, writeTableContent, readTableContent>(ItemStorage::entry),
    row<ChartContent, writePicture<ChartContent, chartName>, readPicture<ChartContent>>(ItemStorage::picture),
    row<TextContent, writeStyled<TextContent, textName>, readStyled<TextContent>>(ItemStorage::entry),
    row<LogContent, writeLog, readLog>(ItemStorage::entry),
    row<WarningContent, writeWarning, readWarning>(ItemStorage::entry),
    row<NotesContent, writeNotes, readNotes>(ItemStorage::entry),
    row<PageTitleContent, writeStyled<PageTitleContent, pageTitleName>, readStyled<PageTitleContent>>(
        ItemStorage::entry),
    row<ModelContent, writeModel, readModel>(ItemStorage::manifest),
    row<TreeContent, writePicture<TreeContent, treeName>, readPicture<TreeContent>>(ItemStorage::picture),
    row<GridContent, writeGridContent, readGridContent>(ItemStorage::entry),
    row<UnknownContent, writeUnknown, readUnknown>(ItemStorage::raw),
}};

constexpr bool isWhole() {
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        if (kinds[i].type != static_cast<ItemType>(i) || kinds[i].write == nullptr ||
            kinds[i].read == nullptr) {
            return false;
        }
    }
    return true;
}
static_assert(isWhole());  // every type has a row, in the order of ItemType

}  // namespace

const ItemKind& kindOf(ItemType type) { return kinds[static_cast<std::size_t>(type)]; }

namespace {

template <std::size_t... index>
ItemContent emptyAmong(ItemType type, std::index_sequence<index...> /*all*/) {
    ItemContent content;
    const bool made[] = {(index == static_cast<std::size_t>(type) && (content.emplace<index>(), true))...};
    static_cast<void>(made);
    return content;
}

}  // namespace

ItemContent emptyContent(ItemType type) {
    return emptyAmong(type, std::make_index_sequence<itemTypeCount>());
}

const ShownPicture* pictureOf(const ItemContent& content) {
    if (const auto* const chart = std::get_if<ChartContent>(&content)) return chart;
    return std::get_if<TreeContent>(&content);
}

}  // namespace vexa::frontend
