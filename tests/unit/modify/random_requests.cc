#include "tests/unit/modify/random_requests.h"

#include <iterator>

#include "frontend/document/walk.h"

namespace vexa::frontend {

namespace {

/// Texts without what makes a request ambiguous where they are written as they are.
void keep(std::vector<std::string>& texts, const std::string& text) {
    const bool isPlain =
        text.find_first_of("\"&<>'") == std::string::npos && text.find('\0') == std::string::npos;
    if (isPlain && !text.empty() && texts.size() < 50) texts.push_back(text);
}

constexpr std::string_view kTypes[] = {"charts",   "headings", "logs",           "notes",
                                       "models",   "tables",   "texts",          "trees",
                                       "warnings", "unknown",  "outlineheaders", "other"};
constexpr std::string_view kKinds[] = {"correlation", "count",     "mean",  "median",
                                       "percent",     "residual",  "body",  "significance",
                                       "headers",     "footnotes", "title", "caption"};
constexpr std::string_view kConditions[] = {"all",      "missing",   "top(3)",       "bottom(2)", "&gt;1",
                                            "&lt;=2.5", "&lt;&gt;0", "&gt;=-1000.5", "=12"};
constexpr std::string_view kReaches[] = {"CELL",    "COLUMN",       "ROW",      "COLUMNDATA",
                                         "ROWDATA", "COLUMNHEADER", "ROWHEADER"};
constexpr std::string_view kFormats[] = {"F8.2", "COMMA12.1", "PCT5.1", "DATE", "E9.2", "NONE", "F99"};
constexpr std::string_view kFlags[] = {"true", "false"};

}  // namespace

RandomRequests::RandomRequests(std::uint32_t seed, const Outline& outline) : random_(seed) {
    class Noting : public OutlineVisitor {
      public:
        explicit Noting(RandomRequests& requests) : requests_(requests) {}
        bool enter(const WalkPlace& place) override {
            requests_.note(place.item());
            return true;
        }

      private:
        RandomRequests& requests_;
    } noting(*this);
    walk(outline, noting);
}

void RandomRequests::note(const Item& item) {
    keep(commands_, item.command);
    keep(subtypes_, item.subtype);
    keep(labels_, shownLabel(item));
    const auto* const table = std::get_if<TableContent>(&item.content);
    if (table == nullptr) return;
    for (const tables::TableDimension& dimension : table->table.data->dimensions()) {
        keep(categories_, dimension.label);
        for (const tables::TableCategory& each : dimension.categories) keep(categories_, each.label);
        for (const tables::TableGroup& each : dimension.groups) keep(categories_, each.label);
    }
}

std::string_view RandomRequests::oneOf(const std::vector<std::string>& texts) {
    return texts[below(texts.size())];
}

std::string RandomRequests::attribute(std::string_view name, std::string_view value) const {
    return ' ' + std::string(name) + "=\"" + std::string(value) + '"';
}

std::string RandomRequests::selection() {
    std::string text = "<modifyEvent";
    const bool all = chance(2);
    if (all) text += attribute("all", "true");
    for (const std::string_view type : kTypes) {
        if (chance(all ? 8 : 2)) text += attribute(type, all ? "false" : "true");
    }
    if (chance(4)) text += attribute("visibleOnly", "true");
    return text + '>' + criteria();
}

std::string RandomRequests::criteria() {
    std::string text;
    if (chance(6)) text += "<command" + attribute("commandName", oneOf(commands_)) + "/>";
    if (chance(8))
        text += "<command" + attribute("commandName", oneOf(commands_)) + attribute("last", "true") + "/>";
    if (chance(20)) text += "<command  last=\"true\"/>";
    if (chance(8)) text += "<subtype" + attribute("subtype", oneOf(subtypes_)) + "/>";
    if (chance(8))
        text += "<label" + attribute("expression", oneOf(labels_)) + attribute("begins", "true") + "/>";
    if (chance(8)) text += "<label" + attribute("expression", "e") + attribute("contains", "true") + "/>";
    if (chance(8)) text += "<instance" + attribute("instance", std::to_string(1 + below(3))) + "/>";
    if (chance(12)) text += "<instance last=\"true\"/>";
    return text;
}

std::string RandomRequests::objectChange() {
    std::string text = "<objectProperties";
    if (chance(2)) text += attribute("visible", chance(2) ? "yes" : "no");
    if (chance(3)) text += attribute("sizeWidth", std::to_string(1 + below(300)));
    if (chance(3)) text += attribute("sizeHeightPCT", std::to_string(1 + below(300)));
    if (chance(3)) text += attribute("label", "Label " + std::to_string(below(9)));
    return text + "/>";
}

std::string RandomRequests::tableChange() {
    std::string text = "<modifyTable";
    if (chance(3)) text += attribute("title", "New title");
    if (chance(4)) text += attribute("summary", "New caption");
    if (chance(3)) text += attribute("transpose", "true");
    if (chance(3)) {
        text += chance(2) ? attribute("sortLabel", oneOf(categories_))
                          : attribute("sortPosition", std::to_string(below(4)));
        text += attribute("ascending", kFlags[below(2)]);
    }
    if (chance(3)) text += attribute("format", kFormats[below(std::size(kFormats))]);
    if (chance(5)) text += attribute("defaultTableLook", "true");
    std::string children;
    if (chance(3)) {
        children += "<layer" + attribute("layerInt", std::to_string(below(3))) +
                    attribute("categoryInt", std::to_string(below(3))) + "/>";
    }
    if (chance(5)) children += "<tableLook><tableProperties name=\"chance\"/></tableLook>";
    return text + (children.empty() ? "/>" : '>' + children + "</modifyTable>");
}

std::string RandomRequests::cellKinds() {
    std::string text;
    for (const std::string_view kind : kKinds) {
        if (chance(5)) text += attribute(kind, "true");
    }
    if (chance(3))
        text += attribute("selectExpression",
                          std::string(oneOf(categories_)) + ';' + std::string(oneOf(categories_)));
    if (chance(5)) text += attribute("selectPosition", std::to_string(1 + below(4)) + ";2");
    return text + attribute("selectColumns", chance(2) ? "both" : kFlags[below(2)]);
}

std::string RandomRequests::condition() {
    return chance(3) ? attribute("selectCondition", kConditions[below(std::size(kConditions))])
                     : std::string();
}

std::string RandomRequests::color(std::string_view prefix) {
    std::string text;
    for (const std::string_view part : {"Red", "Green", "Blue"}) {
        text += attribute(std::string(prefix) + std::string(part), std::to_string(below(256)));
    }
    return text;
}

std::string RandomRequests::cellsChange(bool replaces) {
    std::string text = "<tableCells" + cellKinds() + condition();
    if (chance(8)) text += attribute("revertToDefault", "true");
    if (chance(2)) text += attribute("bold", kFlags[below(2)]);
    if (chance(4)) text += attribute("italic", kFlags[below(2)]);
    if (chance(4)) text += attribute("columnWidth", std::to_string(1 + below(100)));
    if (chance(4)) text += attribute("fontSize", "10.5");
    if (chance(4)) text += color("text");
    if (chance(4)) text += color("background");
    if (chance(3)) text += attribute("applyTo", kReaches[below(std::size(kReaches))]);
    if (chance(4)) text += attribute("format", kFormats[below(std::size(kFormats))]);
    if (replaces && chance(3)) {
        text += chance(2) ? attribute("replace", "replaced")
                          : attribute("replaceValue", chance(2) ? "-1" : "3.5");
    }
    return text + "/>";
}

std::string RandomRequests::textChange() {
    std::string text = "<modifyText";
    if (chance(3)) text += attribute("expression", "New text");
    if (chance(3)) text += attribute("fontSize", "11.5");
    if (chance(3)) text += attribute("fontBold", kFlags[below(2)]);
    return text + "/>";
}

std::string RandomRequests::group(bool deletes, bool replaces) {
    std::string text = selection();
    if (chance(5))
        text += "<indexObject type=\"letterCAP\"" + attribute("indexStart", std::to_string(below(30))) + "/>";
    if (deletes && chance(3)) text += "<deleteObject/>";
    if (chance(6)) text += "<modifyGraph styleSheet=\"Calm\"/>";
    if (chance(3)) text += objectChange();
    if (chance(2)) text += tableChange();
    if (chance(2)) text += cellsChange(replaces);
    if (chance(4)) text += textChange();
    return text + "</modifyEvent>";
}

}  // namespace vexa::frontend
