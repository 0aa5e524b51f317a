#include "frontend/modify/text_change.h"

#include <utility>

namespace vexa::frontend {

namespace {

StyledText* textOf(Item& item) {
    if (auto* const text = std::get_if<TextContent>(&item.content)) return text;
    if (auto* const heading = std::get_if<HeadingContent>(&item.content)) return heading;
    return std::get_if<PageTitleContent>(&item.content);
}

bool isText(ItemType type) {
    return type == ItemType::text || type == ItemType::heading || type == ItemType::pageTitle;
}

}  // namespace

void changeText(Outline& outline, ItemId id, const TextChange& change, const tables::CellStyle& style,
                ItemPlan& plan) {
    if (!isText(outline.find(id)->item.type())) return;
    Item changed = outline.find(id)->item;
    StyledText& text = *textOf(changed);
    const StyledText before = text;
    if (!change.text.empty()) text.text = change.text;
    text.style.overlay(style);
    if (text == before) return;
    outline.change(id) = std::move(changed);
    plan.add(ChangeKind::text);
}

}  // namespace vexa::frontend
