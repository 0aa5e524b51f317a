#include "frontend/document/item.h"

#include <algorithm>

namespace vexa::frontend {
namespace {

const ShownPicture* pictureOf(const Item& item) {
    if (const auto* chart = std::get_if<ChartContent>(&item.content)) return chart;
    return std::get_if<TreeContent>(&item.content);
}

std::string titleOf(const Item& item) {
    if (const auto* table = std::get_if<TableContent>(&item.content)) return table->table.view->title;
    if (const auto* grid = std::get_if<GridContent>(&item.content)) return grid->grid->title;
    return {};
}

}  // namespace

ItemType itemTypeOf(std::string_view word) {
    const auto* const found = std::find(itemTypeWords.begin(), itemTypeWords.end(), word);
    return found == itemTypeWords.end() ? ItemType::unknown
                                        : static_cast<ItemType>(found - itemTypeWords.begin());
}

bool ShownPicture::operator==(const ShownPicture& other) const {
    return (picture == other.picture || *picture == *other.picture) &&
           alternativeText == other.alternativeText && templates == other.templates &&
           styleSheet == other.styleSheet;
}

std::string_view typeWord(const Item& item) {
    if (const auto* unknown = std::get_if<UnknownContent>(&item.content)) return unknown->type;
    return itemTypeWords[item.content.index()];
}

std::string shownLabel(const Item& item) {
    if (!item.label.empty()) return item.label;
    if (std::string title = titleOf(item); !title.empty()) return title;
    return item.command.empty() ? std::string(typeWord(item)) : item.command;
}

std::string labelBeforeValue(const NoteLine& line) {
    return line.label.empty() || line.value.empty() ? line.label : line.label + ": ";
}

std::optional<ItemSize> shownSize(const Item& item) {
    ItemSize natural;
    if (const ShownPicture* const shown = pictureOf(item)) {
        natural = {shown->picture->width, shown->picture->height};
    }
    if (item.width && item.height) return ItemSize{*item.width, *item.height};
    if (natural.width <= 0 || natural.height <= 0) return std::nullopt;
    if (item.width) return ItemSize{*item.width, *item.width * natural.height / natural.width};
    if (item.height) return ItemSize{*item.height * natural.width / natural.height, *item.height};
    return natural;
}

}  // namespace vexa::frontend
