// Style sheets of pictures, so that they reach into a page no further than their picture, and fetch nothing.
#pragma once

#include <string>
#include <string_view>

namespace vexa::frontend {

/// What sets the names of one picture apart from those of all others on the page.
struct PictureScope {
    std::string element;  ///< the id of the element that the picture stands in

    [[nodiscard]] std::string prefixed(std::string_view name) const {
        return element + "-" + std::string(name);
    }
};

/// Declarations without those that could fetch something or leave the picture's place; references to
/// elements of the picture by their new names.
[[nodiscard]] std::string safeDeclarations(std::string_view css, const PictureScope& scope);

/// Rules that match within the picture only, with ids and classes by their new names. Of the rules with an
/// at-sign `@media` and `@supports` stay.
[[nodiscard]] std::string scopedRules(std::string_view css, const PictureScope& scope);

/// `value` with `url(#name)` by its new name; false where it refers to anything else.
[[nodiscard]] bool scopeReferences(std::string& value, const PictureScope& scope);

}  // namespace vexa::frontend
