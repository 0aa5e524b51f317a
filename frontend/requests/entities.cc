#include "frontend/requests/entities.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace vexa::frontend {

namespace {

struct Entity {
    std::string_view name;
    char character;
};
constexpr Entity kEntities[] = {
    {"&quot;", '"'}, {"&amp;", '&'}, {"&apos;", '\''}, {"&lt;", '<'}, {"&gt;", '>'}};

}  // namespace

std::optional<std::string> withoutEntities(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const std::size_t ampersand = text.find('&');
        result += text.substr(0, ampersand);
        text.remove_prefix(std::min(ampersand, text.size()));
        if (text.empty()) {
            break;
        }
        const auto* const entity =
            std::find_if(std::begin(kEntities), std::end(kEntities),
                         [text](const Entity& each) { return text.starts_with(each.name); });
        if (entity == std::end(kEntities)) {
            return std::nullopt;
        }
        result += entity->character;
        text.remove_prefix(entity->name.size());
    }
    return result;
}

}  // namespace vexa::frontend
