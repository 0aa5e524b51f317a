#include "frontend/requests/request_elements.h"

#include <limits>
#include <utility>
#include <vector>

#include "backend/text/utf8.h"
#include "frontend/requests/request_fields.h"

namespace vexa::frontend {

namespace {

constexpr std::int32_t kAnyWhole = std::numeric_limits<std::int32_t>::min();
/// The least number of a layer or a category: -1 stands for an empty name.
constexpr std::int32_t kLeastLayer = -1;

constexpr RequestWord<IndexNotation> kNotations[] = {{"number", IndexNotation::number},
                                                     {"letter", IndexNotation::smallLetters},
                                                     {"letterCAP", IndexNotation::capitalLetters},
                                                     {"roman", IndexNotation::smallRoman},
                                                     {"romanCap", IndexNotation::capitalRoman}};
constexpr RequestWord<VisibilityChange> kVisibilities[] = {
    {"asis", VisibilityChange::asIs}, {"yes", VisibilityChange::show}, {"no", VisibilityChange::hide}};
constexpr RequestWord<CellDimension> kDimensions[] = {
    {"true", CellDimension::columns}, {"false", CellDimension::rows}, {"both", CellDimension::both}};
constexpr RequestWord<CellReach> kReaches[] = {{"CELL", CellReach::cell},
                                               {"COLUMN", CellReach::column},
                                               {"ROW", CellReach::row},
                                               {"COLUMNDATA", CellReach::columnData},
                                               {"ROWDATA", CellReach::rowData},
                                               {"COLUMNHEADER", CellReach::columnHeader},
                                               {"ROWHEADER", CellReach::rowHeader}};

std::optional<SortChange> sortOf(RequestFields& fields) {
    if (!fields.has("sortLabel") && !fields.has("sortPosition") && !fields.has("ascending")) {
        return std::nullopt;
    }
    fields.requireOne({"sortLabel", "sortPosition"});
    fields.requireOne({"ascending"});
    SortChange sort;
    fields.text("sortLabel", sort.label);
    fields.whole("sortPosition", kAnyWhole, sort.position);
    std::optional<bool> ascending;
    fields.flag("ascending", ascending);
    sort.ascending = ascending.value_or(true);
    return sort;
}

/// The order of layers: by what names the dimension, then by what names the category.
int kindOf(const LayerChange& layer) { return (layer.layer.label ? 0 : 2) + (layer.category.label ? 0 : 1); }

LayerChange readLayer(RequestScanner& scanner) {
    const bool named = scanner.isAt(" layer=");
    const ScannedTag tag = scanner.readTag(named ? form::kNamedLayer : form::kNumberedLayer);
    RequestFields fields(scanner, tag);
    fields.requireOne({named ? "layer" : "layerInt"});
    fields.requireOne({"category", "categoryInt"});
    LayerChange layer;
    fields.text("layer", layer.layer.label);
    fields.whole("layerInt", kLeastLayer, layer.layer.number);
    fields.text("category", layer.category.label);
    fields.whole("categoryInt", kLeastLayer, layer.category.number);
    return layer;
}

void readLayers(RequestScanner& scanner, std::vector<LayerChange>& layers) {
    while (scanner.takeBeginning("layer")) {
        LayerChange layer = readLayer(scanner);
        if (!layers.empty() && kindOf(layer) < kindOf(layers.back())) {
            scanner.refuseHere("layer", listOf({"<tableLook>", "</modifyTable>"}));
        }
        layers.push_back(std::move(layer));
    }
}

void expect(RequestScanner& scanner, std::string_view literal, std::string_view element) {
    if (!scanner.take(literal)) {
        scanner.refuseHere(element, listOf({literal}));
    }
}

std::optional<CellReplacement> replacementOf(RequestFields& fields) {
    if (!fields.has("replaceValue") && !fields.has("replace")) {
        return std::nullopt;
    }
    fields.allowOne({"replaceValue", "replace"});
    CellReplacement replacement;
    fields.number("replaceValue", replacement.number);
    fields.text("replace", replacement.text);
    return replacement;
}

void readCellChoice(RequestFields& fields, CellsChange& cells) {
    for (std::size_t i = 0; i < kCellKinds; ++i) {
        bool chosen = false;
        fields.truth(form::kCellsAttributes[i].name, chosen);
        cells.kinds.set(i, chosen);
    }
    fields.text("selectExpression", cells.labels);
    fields.positions("selectPosition", cells.positions);
    fields.requireOne({"selectColumns"});
    fields.choice("selectColumns", kDimensions, cells.dimension);
    fields.condition("selectCondition", cells.condition);
    fields.choice("applyTo", kReaches, cells.reach);
}

}  // namespace

CommandCriterion readCommandCriterion(RequestScanner& scanner) {
    const ScannedTag tag = scanner.readTag(form::kCommand);
    RequestFields fields(scanner, tag);
    fields.allowOne({"last", "instance"});
    CommandCriterion command;
    fields.text("commandName", command.name);
    fields.whole("instance", 1, command.run);
    fields.truth("last", command.last);
    return command;
}

std::string readSubtypeCriterion(RequestScanner& scanner) {
    const ScannedTag tag = scanner.readTag(form::kSubtype);
    RequestFields fields(scanner, tag);
    fields.requireOne({"subtype"});
    std::string subtype;
    fields.text("subtype", subtype);
    return subtype;
}

LabelCriterion readLabelCriterion(RequestScanner& scanner, LabelMatch least) {
    const ScannedTag tag = scanner.readTag(form::kLabel);
    RequestFields fields(scanner, tag);
    fields.requireOne({"expression"});
    fields.requireOne({"exact", "begins", "ends", "contains"});
    LabelCriterion label;
    fields.text("expression", label.text);
    std::vector<std::string_view> fits;
    for (const LabelMatch match :
         {LabelMatch::exact, LabelMatch::begins, LabelMatch::ends, LabelMatch::contains}) {
        const std::string_view name = form::kLabelAttributes[1 + static_cast<std::size_t>(match)].name;
        bool given = false;
        fields.truth(name, given);
        label.match = given ? match : label.match;
        if (match >= least) {
            fits.push_back(name);
        }
    }
    if (label.match < least && !tag.attributes.empty()) {
        fields.refuse(tag.attributes.back(), listOf(fits));
    }
    return label;
}

InstanceCriterion readInstanceCriterion(RequestScanner& scanner) {
    const ScannedTag tag = scanner.readTag(form::kInstance);
    RequestFields fields(scanner, tag);
    fields.requireOne({"instance", "last"});
    InstanceCriterion instance;
    bool last = false;
    fields.whole("instance", 1, instance.number);
    fields.truth("last", last);
    return instance;
}

IndexChange readIndexChange(RequestScanner& scanner) {
    const ScannedTag tag = scanner.readTag(form::kIndex);
    RequestFields fields(scanner, tag);
    fields.requireOne({"type"});
    fields.requireOne({"indexStart"});
    IndexChange index;
    fields.choice("type", kNotations, index.notation);
    fields.whole("indexStart", kAnyWhole, index.start);
    return index;
}

std::optional<GraphChange> readGraphChange(RequestScanner& scanner) {
    if (scanner.isAt("<")) {
        return std::nullopt;
    }
    const ScannedTag tag = scanner.readTag(form::kGraph);
    GraphChange graph;
    RequestFields(scanner, tag).text("styleSheet", graph.styleSheet);
    if (tag.open) {
        do {
            expect(scanner, "<chartTemplate>", "modifyGraph");
            graph.templates.push_back(validUtf8(scanner.readFile(form::kTemplate)));
        } while (scanner.isAt("<chartTemplate>"));
        expect(scanner, "</modifyGraph>", "modifyGraph");
    }
    return graph == GraphChange() ? std::nullopt : std::optional(std::move(graph));
}

ObjectChange readObjectChange(RequestScanner& scanner) {
    const ScannedTag tag = scanner.readTag(form::kObject);
    RequestFields fields(scanner, tag);
    fields.allowOne({"sizeWidth", "sizeWidthPCT"});
    fields.allowOne({"sizeHeight", "sizeHeightPCT"});
    ObjectChange object;
    fields.choice("visible", kVisibilities, object.visible);
    fields.size("sizeWidth", object.widthPoints);
    fields.size("sizeHeight", object.heightPoints);
    fields.size("sizeWidthPCT", object.widthPercent);
    fields.size("sizeHeightPCT", object.heightPercent);
    fields.text("label", object.label);
    return object;
}

TableChange readTableChange(RequestScanner& scanner) {
    const ScannedTag tag = scanner.readTag(form::kTable);
    RequestFields fields(scanner, tag);
    TableChange table;
    fields.text("title", table.title);
    fields.text("summary", table.summary);
    fields.truth("transpose", table.transpose);
    table.sort = sortOf(fields);
    fields.text("format", table.format);
    fields.truth("defaultTableLook", table.defaultLook);
    if (tag.open) {
        readLayers(scanner, table.layers);
        if (scanner.take("<tableLook>")) {
            table.look = scanner.readFile(form::kLook);
        }
        expect(scanner, "</modifyTable>", "modifyTable");
    }
    return table;
}

CellsChange readCellsChange(RequestScanner& scanner) {
    const ScannedTag tag = scanner.readTag(form::kCells);
    RequestFields fields(scanner, tag);
    CellsChange cells;
    readCellChoice(fields, cells);
    fields.truth("revertToDefault", cells.revertToDefault);
    fields.flag("bold", cells.bold);
    fields.flag("underline", cells.underline);
    fields.flag("italic", cells.italic);
    fields.whole("columnWidth", 1, cells.columnWidth);
    fields.size("fontSize", cells.fontSize);
    fields.color("textRed", "textGreen", "textBlue", cells.textColor);
    fields.color("backgroundRed", "backgroundGreen", "backgroundBlue", cells.backgroundColor);
    fields.text("format", cells.format);
    fields.text("font", cells.font);
    cells.replacement = replacementOf(fields);
    return cells;
}

TextChange readTextChange(RequestScanner& scanner) {
    const ScannedTag tag = scanner.readTag(form::kText);
    RequestFields fields(scanner, tag);
    TextChange text;
    fields.text("expression", text.text);
    fields.text("fontFamily", text.font);
    fields.color("textRed", "textGreen", "textBlue", text.color);
    fields.size("fontSize", text.fontSize);
    fields.flag("fontBold", text.bold);
    fields.flag("fontItalic", text.italic);
    fields.flag("fontUnderline", text.underline);
    return text;
}

}  // namespace vexa::frontend
