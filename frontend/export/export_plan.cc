#include "frontend/export/export_plan.h"

#include <algorithm>
#include <utility>

#include "frontend/package/packed_text.h"

namespace vexa::frontend {

namespace {

bool asksForAll(ExportedParts asked, const std::optional<tables::LayerPrinting>& own) {
    if (asked != ExportedParts::printSetting) return asked == ExportedParts::all;
    return own == tables::LayerPrinting::all;
}

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
        // A header or model that holds nothing that is exported is not exported itself.
        const ItemType type = place.item().type();
        if (type != ItemType::header && type != ItemType::model) return;
        const bool isLast = !plan_.items.empty() && plan_.items.back().node == &place.node;
        if (isLast) plan_.items.pop_back();
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
    ExportPlan plan = planner.take();
    plan.documentIsEmpty = outline.isEmpty();
    return plan;
}

}  // namespace vexa::frontend
