#include "tests/unit/requests/request_text.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "backend/text/character_set.h"

namespace vexa::frontend {

namespace {

constexpr std::string_view kTypes[] = {"charts",  "headings", "logs",      "notes",    "models",
                                       "tables",  "texts",    "trees",     "warnings", "outlineheaders",
                                       "unknown", "other",    "pagetitles"};
constexpr std::string_view kMatches[] = {"exact", "begins", "ends", "contains"};
constexpr std::string_view kNotations[] = {"number", "letter", "letterCAP", "roman", "romanCap"};
constexpr std::string_view kVisibilities[] = {"asis", "yes", "no"};
constexpr std::string_view kAreas[] = {"correlation", "count",     "mean",  "median",
                                       "percent",     "residual",  "body",  "significance",
                                       "headers",     "footnotes", "title", "caption"};
constexpr std::string_view kDimensions[] = {"true", "false", "both"};
constexpr std::string_view kComparisons[] = {">", ">=", "<", "<=", "=", "<>"};
constexpr std::string_view kReaches[] = {"CELL",    "COLUMN",       "ROW",      "COLUMNDATA",
                                         "ROWDATA", "COLUMNHEADER", "ROWHEADER"};

std::string escaped(std::string_view text) {
    std::string result;
    for (const char each : text) {
        switch (each) {
            case '"':
                result += "&quot;";
                break;
            case '&':
                result += "&amp;";
                break;
            case '\'':
                result += "&apos;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            default:
                result += each;
        }
    }
    return result;
}

/// Six digits, as the module writes them, or as many as the number needs.
std::string shown(double number) {
    std::array<char, 64> text{};
    static_cast<void>(std::snprintf(text.data(), text.size(), "%g", number));
    if (std::strtod(text.data(), nullptr) != number) {
        static_cast<void>(std::snprintf(text.data(), text.size(), "%.17g", number));
    }
    return text.data();
}

/// Appends attributes and elements.
class Writer {
  public:
    void tag(std::string_view name) { text.append("<").append(name); }
    void put(std::string_view name, std::string_view value) {
        text.append(" ").append(name).append("=\"").append(value).append("\"");
    }
    void putAny(std::string_view name, std::string_view value) {
        if (!value.empty()) put(name, value);
    }
    template <class Number>
    void putNumber(std::string_view name, const std::optional<Number>& value) {
        if (value) put(name, shown(*value));
    }
    void putWhole(std::string_view name, const std::optional<std::int32_t>& value) {
        if (value) put(name, std::to_string(*value));
    }
    void putTrue(std::string_view name, bool value) {
        if (value) put(name, "true");
    }
    void putFlag(std::string_view name, const std::optional<bool>& value) {
        if (value) put(name, *value ? "true" : "false");
    }
    void putColor(const std::string& part, const std::optional<RequestedColor>& color) {
        if (!color) return;
        put(part + "Red", std::to_string(color->red));
        put(part + "Green", std::to_string(color->green));
        put(part + "Blue", std::to_string(color->blue));
    }

    void write(const ModifyGroup& group);
    void writeCriteria(const ModifyGroup& group);
    void write(const GraphChange& graph);
    void write(const ObjectChange& object);
    void write(const TableChange& table);
    void write(const LayerChange& layer);
    void write(const CellsChange& cells);
    void writeCondition(const CellCondition& condition);
    void write(const TextChange& change);

    std::string text;
};

void Writer::write(const ModifyGroup& group) {
    tag("modifyEvent");
    putTrue("all", group.types.all);
    for (std::size_t i = 0; i < kSelectedTypes; ++i) {
        if (group.types.selected.test(i)) put(kTypes[i], "true");
        if (group.types.excepted.test(i)) put(kTypes[i], "false");
    }
    putTrue("visibleOnly", group.visibleOnly);
    text += ">";
    writeCriteria(group);
    if (group.index) {
        tag("indexObject");
        put("type", kNotations[static_cast<std::size_t>(group.index->notation)]);
        put("indexStart", std::to_string(group.index->start));
        text += "/>";
    }
    if (group.deletes) text += "<deleteObject/>";
    if (group.graph) write(*group.graph);
    if (group.object) write(*group.object);
    if (group.table) write(*group.table);
    for (const CellsChange& each : group.cells) write(each);
    if (group.text) write(*group.text);
    text += "</modifyEvent>";
}

void Writer::writeCriteria(const ModifyGroup& group) {
    for (const CommandCriterion& each : group.commands) {
        tag("command ");
        if (!each.name.empty()) text.append("commandName=\"").append(each.name).append("\"");
        putTrue("last", each.last);
        putWhole("instance", each.run);
        text += "/>";
    }
    for (const std::string& each : group.subtypes) {
        tag("subtype");
        put("subtype", each);
        text += "/>";
    }
    for (const LabelCriterion& each : group.labels) {
        tag("label");
        put("expression", each.text);
        put(kMatches[static_cast<std::size_t>(each.match)], "true");
        text += "/>";
    }
    for (const InstanceCriterion& each : group.instances) {
        tag("instance");
        putWhole("instance", each.number);
        putTrue("last", each.isLast());
        text += "/>";
    }
}

void Writer::write(const GraphChange& graph) {
    tag("modifyGraph");
    putAny("styleSheet", graph.styleSheet);
    if (graph.templates.empty()) {
        text += graph.styleSheet.empty() ? "" : "/>";
        return;
    }
    text += ">";
    for (const std::string& each : graph.templates) {
        text.append("<chartTemplate>").append(each).append("</chartTemplate>");
    }
    text += "</modifyGraph>";
}

void Writer::write(const ObjectChange& object) {
    tag("objectProperties");
    if (object.visible) put("visible", kVisibilities[static_cast<std::size_t>(*object.visible)]);
    putNumber("sizeWidth", object.widthPoints);
    putNumber("sizeHeight", object.heightPoints);
    putNumber("sizeWidthPCT", object.widthPercent);
    putNumber("sizeHeightPCT", object.heightPercent);
    putAny("label", escaped(object.label));
    text += "/>";
}

void Writer::write(const TableChange& table) {
    tag("modifyTable");
    putAny("title", escaped(table.title));
    putAny("summary", escaped(table.summary));
    putTrue("transpose", table.transpose);
    if (table.sort) {
        if (table.sort->label.empty()) {
            put("sortPosition", std::to_string(table.sort->position));
        } else {
            put("sortLabel", escaped(table.sort->label));
        }
        putFlag("ascending", table.sort->ascending);
    }
    putAny("format", table.format);
    putTrue("defaultTableLook", table.defaultLook);
    if (table.layers.empty() && table.look.empty()) {
        text += "/>";
        return;
    }
    text += ">";
    for (const LayerChange& each : table.layers) write(each);
    if (!table.look.empty()) text.append("<tableLook>").append(table.look).append("</tableLook>");
    text += "</modifyTable>";
}

void Writer::write(const LayerChange& layer) {
    tag("layer");
    const bool named = layer.layer.label.has_value();
    named ? put("layer", escaped(*layer.layer.label)) : put("layerInt", std::to_string(layer.layer.number));
    if (layer.category.label) {
        const std::string label = escaped(*layer.category.label);
        put("category", named ? label : fromUtf8(label));
    } else {
        put("categoryInt", std::to_string(layer.category.number));
    }
    text += "/>";
}

void Writer::write(const CellsChange& cells) {
    tag("tableCells");
    for (std::size_t i = 0; i < kCellKinds; ++i) putTrue(kAreas[i], cells.kinds.test(i));
    putAny("selectExpression", escaped(cells.labels));
    std::string positions;
    for (const std::int32_t each : cells.positions) {
        positions += (positions.empty() ? "" : ";") + std::to_string(each);
    }
    putAny("selectPosition", positions);
    put("selectColumns", kDimensions[static_cast<std::size_t>(cells.dimension)]);
    writeCondition(cells.condition);
    putTrue("revertToDefault", cells.revertToDefault);
    putFlag("bold", cells.bold);
    putFlag("underline", cells.underline);
    putFlag("italic", cells.italic);
    putWhole("columnWidth", cells.columnWidth);
    putNumber("fontSize", cells.fontSize);
    putColor("text", cells.textColor);
    putColor("background", cells.backgroundColor);
    if (cells.reach != CellReach::cell) put("applyTo", kReaches[static_cast<std::size_t>(cells.reach)]);
    putAny("format", cells.format);
    putAny("font", cells.font);
    if (cells.replacement && cells.replacement->text) {
        put("replace", *cells.replacement->text);
    } else if (cells.replacement) {
        put("replaceValue", shown(cells.replacement->number));
    }
    text += "/>";
}

void Writer::writeCondition(const CellCondition& condition) {
    using Kind = CellCondition::Kind;
    const std::string_view name = "selectCondition";
    const std::string count = std::to_string(condition.count);
    switch (condition.kind) {
        case Kind::none:
            break;
        case Kind::all:
            return put(name, "all");
        case Kind::missing:
            return put(name, "missing");
        case Kind::top:
            return put(name, "top(" + count + ")");
        case Kind::bottom:
            return put(name, "bottom(" + count + ")");
        case Kind::comparison:
            return put(name, escaped(kComparisons[static_cast<std::size_t>(condition.comparison)]) +
                                 shown(condition.number));
    }
}

void Writer::write(const TextChange& change) {
    tag("modifyText");
    putAny("expression", escaped(change.text));
    putAny("fontFamily", change.font);
    putColor("text", change.color);
    putNumber("fontSize", change.fontSize);
    putFlag("fontBold", change.bold);
    putFlag("fontItalic", change.italic);
    putFlag("fontUnderline", change.underline);
    text += "/>";
}

}  // namespace

std::string writeModifyRequest(const ModifyRequest& request) {
    Writer writer;
    writer.tag("modifyOutputObject");
    writer.put("documentName", escaped(request.documentName));
    writer.putTrue("debug", request.debug);
    writer.text += ">";
    for (const ModifyGroup& group : request.groups) writer.write(group);
    return writer.text + "</modifyOutputObject>";
}

}  // namespace vexa::frontend
