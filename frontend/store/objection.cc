#include "frontend/store/objection.h"

#include <algorithm>

namespace vexa::frontend {
namespace {

thread_local ObjectionScope* current = nullptr;

/// The beginning of a value: a message is no place for a long one.
std::string shortened(std::string_view value) {
    constexpr std::size_t longest = 60;
    std::size_t length = std::min(value.size(), longest);
    while (length < value.size() && length > 0 &&
           (static_cast<unsigned char>(value[length]) & 0xC0U) == 0x80U) {
        --length;
    }
    return std::string(value.substr(0, length)) + (length < value.size() ? "..." : "");
}

}  // namespace

ObjectionScope::ObjectionScope() { current = this; }

ObjectionScope::~ObjectionScope() { current = nullptr; }

PackageResult ObjectionScope::explain(PackageResult result) const {
    result.found = objection_.found;
    result.expected = objection_.expected;
    return result;
}

void object(std::string_view element, std::string_view attribute, std::string_view value,
            std::string_view expected) {
    if (current == nullptr || !current->objection_.found.empty()) return;
    Objection& objection = current->objection_;
    objection.found.append("<").append(element);
    if (!attribute.empty()) {
        objection.found.append(" ").append(attribute).append("=\"").append(shortened(value)).append("\"");
    }
    objection.found += '>';
    objection.expected = expected;
}

}  // namespace vexa::frontend
