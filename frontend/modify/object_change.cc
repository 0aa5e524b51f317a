#include "frontend/modify/object_change.h"

#include "frontend/modify/label_index.h"

namespace vexa::frontend {

namespace {

bool hasSize(ItemType type) {
    return type == ItemType::chart || type == ItemType::tree || type == ItemType::model;
}

bool asksForSize(const ObjectChange& change) {
    return change.widthPoints || change.heightPoints || change.widthPercent || change.heightPercent;
}

/// The new length of one side, or nothing where it is not asked for.
std::optional<double> newSide(const std::optional<double>& points, const std::optional<double>& percent,
                              double present) {
    if (points) return points;
    if (percent) return present * *percent / 100;
    return std::nullopt;
}

void changeSize(Outline& outline, ItemId id, const ObjectChange& change, ItemPlan& plan) {
    const OutlineNode& node = *outline.find(id);
    const std::optional<ItemSize> present = presentSize(outline, node);
    const bool inPercent = change.widthPercent || change.heightPercent;
    if (!present && inPercent) {
        plan.report("It has no size that a percentage could be taken of."_text);
        return;
    }
    const ItemSize from = present.value_or(ItemSize{});
    std::optional<double> width = newSide(change.widthPoints, change.widthPercent, from.width);
    std::optional<double> height = newSide(change.heightPoints, change.heightPercent, from.height);
    // The side that is not given keeps the proportion.
    if (present && !height && from.width > 0) height = from.height * *width / from.width;
    if (present && !width && from.height > 0) width = from.width * *height / from.height;
    const Item& item = node.item;
    if ((!width || item.width == width) && (!height || item.height == height)) return;
    Item& changed = outline.change(id);
    if (width) changed.width = width;
    if (height) changed.height = height;
    plan.add(ChangeKind::size);
}

}  // namespace

std::optional<ItemSize> presentSize(const Outline& outline, const OutlineNode& node) {
    const Item& item = node.item;
    if (item.type() != ItemType::model) return shownSize(item);
    if (item.width && item.height) return ItemSize{*item.width, *item.height};
    const std::size_t shown = std::get<ModelContent>(item.content).shown;
    const OutlineNode* const view =
        shown < node.children.size() ? outline.find(node.children[shown]) : nullptr;
    std::optional<ItemSize> size = view == nullptr ? std::nullopt : shownSize(view->item);
    if (!size || size->width <= 0 || size->height <= 0) return size;
    if (item.width) return ItemSize{*item.width, size->height * *item.width / size->width};
    if (item.height) return ItemSize{size->width * *item.height / size->height, *item.height};
    return size;
}

void changeObject(Outline& outline, ItemId id, const ObjectChange& change, ItemPlan& plan) {
    const Item& item = outline.find(id)->item;
    const bool asked = change.visible && *change.visible != VisibilityChange::asIs;
    if (asked && item.visible != (*change.visible == VisibilityChange::show)) {
        outline.change(id).visible = *change.visible == VisibilityChange::show;
        plan.add(ChangeKind::visibility);
    }
    if (!change.label.empty() && outline.find(id)->item.label != change.label) {
        outline.change(id).label = change.label;
        plan.add(ChangeKind::label);
    }
    if (!asksForSize(change)) return;
    if (hasSize(outline.find(id)->item.type())) {
        changeSize(outline, id, change, plan);
    } else {
        plan.passOver("Only charts, trees and models get a size."_text);
    }
}

void appendIndex(Outline& outline, ItemId id, IndexNotation notation, std::int64_t number, ItemPlan& plan) {
    std::string label = shownLabel(outline.find(id)->item) + ' ' + indexText(notation, number);
    outline.change(id).label = std::move(label);
    plan.add(ChangeKind::index);
}

}  // namespace vexa::frontend
