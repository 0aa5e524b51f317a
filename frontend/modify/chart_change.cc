#include "frontend/modify/chart_change.h"

#include <string_view>
#include <variant>

#include "backend/strings/dictionary.h"
#include "frontend/package/xml_reader.h"

namespace vexa::frontend {

namespace {

ShownPicture* pictureOf(Item& item) {
    if (auto* const chart = std::get_if<ChartContent>(&item.content)) return chart;
    return std::get_if<TreeContent>(&item.content);
}

bool isPicture(ItemType type) { return type == ItemType::chart || type == ItemType::tree; }

bool changes(const ShownPicture& picture, const GraphChange& change) {
    const bool templates = !change.templates.empty() && picture.templates != change.templates;
    const bool sheet = !change.styleSheet.empty() && picture.styleSheet != change.styleSheet;
    return templates || sheet;
}

}  // namespace

std::string templateProblem(const std::string& text) {
    XmlReader reader;
    const PackageResult result = reader.parse(text, "template", XmlLimits{}, foreignXml);
    if (result) return {};
    return composed("The chart template cannot be read as XML: ^1"_text, {result.shownDetail()});
}

void changeChart(Outline& outline, ItemId id, const GraphChange& change, ItemPlan& plan) {
    if (!isPicture(outline.find(id)->item.type())) return;
    Item changed = outline.find(id)->item;
    ShownPicture& picture = *pictureOf(changed);
    if (!changes(picture, change)) return;
    if (!change.templates.empty()) picture.templates = change.templates;
    if (!change.styleSheet.empty()) picture.styleSheet = change.styleSheet;
    outline.change(id) = std::move(changed);
    plan.add(ChangeKind::chart);
}

}  // namespace vexa::frontend
