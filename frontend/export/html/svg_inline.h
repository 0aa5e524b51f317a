// SVG pictures as a part of an HTML page.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "frontend/document/item.h"
#include "frontend/export/html/css_scope.h"
#include "frontend/package/package_result.h"

namespace vexa::frontend {

struct InlineSvg {
    const ShownPicture* picture = nullptr;
    ItemSize size;            ///< points
    std::string styleSheet;   ///< the text of the picture's style sheet, CSS
    std::string alternative;  ///< as shown
};

/// Appends the picture as an `svg` element of HTML: parsed, without what is not drawn (scripts, handlers of
/// events, elements of other namespaces, what would be fetched), with ids and classes that are the
/// picture's own on the page, with its templates and its style sheet behind its own style. Nothing is
/// appended when it cannot be read.
PackageResult appendSvg(std::string& html, const InlineSvg& svg, const PictureScope& scope);

/// The rules that a chart's template holds; empty where it cannot be read or holds none.
[[nodiscard]] std::string templateRules(const std::string& text);

}  // namespace vexa::frontend
