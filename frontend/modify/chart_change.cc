#include "frontend/modify/chart_change.h"

#include <cstddef>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "backend/strings/dictionary.h"
#include "frontend/package/xml_reader.h"

namespace vexa::frontend {

namespace {

ShownPicture* pictureOf(Item& item) {
    if (auto* const chart = std::get_if<ChartContent>(&item.content)) return chart;
    return std::get_if<TreeContent>(&item.content);
}

bool isPicture(ItemType type) { return type == ItemType::chart || type == ItemType::tree; }

bool changes(const ShownPicture& picture, const GraphChange& change,
             const std::vector<std::string>& templates) {
    const bool templatesDiffer = !templates.empty() && picture.templates != templates;
    const bool sheet = !change.styleSheet.empty() && picture.styleSheet != change.styleSheet;
    return templatesDiffer || sheet;
}

/// The element itself: a file may have another one around it, whose end comes along.
std::string templateElement(const std::string& text) {
    constexpr std::string_view end = "</template>";
    const std::size_t found = text.rfind(end);
    return found == std::string::npos ? text : text.substr(0, found + end.size());
}

}  // namespace

std::string templateProblem(const std::string& text) {
    XmlReader reader;
    const PackageResult result = reader.parse(templateElement(text), "template", XmlLimits{}, foreignXml);
    if (result) return {};
    return composed("The chart template cannot be read as XML: ^1"_text, {result.shownDetail()});
}

void changeChart(Outline& outline, ItemId id, const GraphChange& change, bool hasStyleSheet, ItemPlan& plan) {
    if (!isPicture(outline.find(id)->item.type())) return;
    if (!hasStyleSheet) plan.report("There is no such style sheet in the folders Looks."_text);
    Item changed = outline.find(id)->item;
    ShownPicture& picture = *pictureOf(changed);
    std::vector<std::string> templates;
    for (const std::string& each : change.templates) templates.push_back(templateElement(each));
    if (!changes(picture, change, templates)) return;
    if (!templates.empty()) picture.templates = std::move(templates);
    if (!change.styleSheet.empty()) picture.styleSheet = change.styleSheet;
    outline.change(id) = std::move(changed);
    plan.add(ChangeKind::chart);
}

}  // namespace vexa::frontend
