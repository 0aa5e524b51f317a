#include "frontend/export/export_plan.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "backend/text/utf8.h"
#include "frontend/package/packed_text.h"

namespace vexa::frontend {

namespace {

bool asksForAll(ExportedParts asked, const std::optional<tables::LayerPrinting>& own) {
    if (asked != ExportedParts::printSetting) return asked == ExportedParts::all;
    return own == tables::LayerPrinting::all;
}

/// What only has others under it.
bool isFrame(const Item& item) { return item.type() == ItemType::header || item.type() == ItemType::model; }

/// Whether there is an item but headers and models, hidden or not.
class ContentFinder : public OutlineVisitor {
  public:
    bool enter(const WalkPlace& place) override {
        found = found || !isFrame(place.item());
        return !found;
    }

    bool found = false;
};

class Planner : public OutlineVisitor {
  public:
    explicit Planner(const ExportSelection& selection) : selection_(selection) {}

    bool enter(const WalkPlace& place) override {
        if (!isExported(place)) return false;
        plan_.items.push_back(
            {&place.node, place.number, place.depth, shownLabel(place.item()), layers(place.item())});
        return true;
    }

    void leave(const WalkPlace& place) override {
        // A header whose items are all left out goes with them; one that never had any stays, for its label.
        if (!isFrame(place.item())) return;
        const bool isLast = !plan_.items.empty() && plan_.items.back().node == &place.node;
        const bool isBare = place.item().type() == ItemType::header && place.node.children.empty();
        if (isLast && !isBare) plan_.items.pop_back();
    }

    [[nodiscard]] ExportPlan take() {
        plan_.pictures = static_cast<std::size_t>(
            std::count_if(plan_.items.begin(), plan_.items.end(), [](const ExportedItem& each) {
                return each.item().type() == ItemType::chart || each.item().type() == ItemType::tree;
            }));
        return std::move(plan_);
    }

  private:
    [[nodiscard]] bool isExported(const WalkPlace& place) const {
        if (place.hidden && !selection_.hiddenItems) return false;
        const auto& excluded = selection_.excluded;
        if (std::find(excluded.begin(), excluded.end(), place.item().type()) != excluded.end()) return false;
        if (!place.isOtherView()) return true;
        return asksForAll(selection_.views, std::get<ModelContent>(place.model->item.content).viewPrinting);
    }

    [[nodiscard]] std::vector<tables::Place> layers(const Item& item) const {
        const auto* const content = std::get_if<TableContent>(&item.content);
        if (content == nullptr) return {};
        const bool all = asksForAll(selection_.layers, content->table.view->layerPrinting);
        return tables::layersOf(content->table, all ? tables::LayerChoice::all : tables::LayerChoice::shown);
    }

    const ExportSelection& selection_;
    ExportPlan plan_;
};

}  // namespace

std::string ExportedItem::shortLabel() const {
    constexpr std::size_t most = 200;
    std::size_t length = 0;
    for (std::size_t i = 0; i < most && length < label.size(); ++i) {
        length += decodeUtf8(std::string_view(label).substr(length)).length;
    }
    return length < label.size() ? label.substr(0, length) + "…" : label;
}

std::size_t bytesHeldUnpacked(const ExportPlan& plan) {
    constexpr std::size_t bytesOfACell = 40;
    std::size_t bytes = PackedText::usualPlainBytes;
    for (const ExportedItem& item : plan.items) {
        const auto* const content = std::get_if<TableContent>(&item.item().content);
        if (content != nullptr) bytes += content->table.data->filledCount() * bytesOfACell;
    }
    return bytes;
}

ExportPlan planExport(const Outline& outline, const ExportSelection& selection) {
    Planner planner(selection);
    walk(outline, planner);
    ContentFinder content;
    walk(outline, content);
    ExportPlan plan = planner.take();
    plan.documentIsEmpty = !content.found;
    return plan;
}

bool ExportPlan::everythingIsHidden() const {
    return !documentIsEmpty && std::all_of(items.begin(), items.end(),
                                           [](const ExportedItem& each) { return isFrame(each.item()); });
}

}  // namespace vexa::frontend
