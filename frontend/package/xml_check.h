// Looks through XML before it is parsed: the parser is fast and trusting, and everything that it would take
// or leave out in silence is refused here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "frontend/package/package_result.h"

namespace vexa::frontend {

/// They bound the memory that the parsed XML takes, and how deep its readers nest.
struct XmlLimits {
    std::size_t tags = 4'000'000;    ///< `<`, wherever it stands
    std::size_t quotes = 8'000'000;  ///< `"` and `'` inside tags
    std::size_t depth = 256;
};

/// What of XML is taken; elements, attributes and text always are.
struct XmlPolicy {
    bool documentTypes = false;  ///< passed over; entities that they define stay undefined
    bool comments = false;
    bool sections = false;      ///< CDATA
    bool instructions = false;  ///< beside the declaration
    /// Text that has elements in it: its pieces are nodes of their own, blanks included. Otherwise an element
    /// has one text, and blanks count as text only where nothing else stands.
    bool mixed = false;
};

/// What other programs write into office formats and XHTML.
inline constexpr XmlPolicy foreignXml{false, true, true, true, true};

struct XmlSize {
    std::size_t tags = 0;
    std::size_t quotes = 0;
    /// Where a document type stands; both 0 without one.
    std::size_t documentType = 0;
    std::size_t documentTypeEnd = 0;
};

/// Refuses XML that is not well formed or not UTF-8, names an entity that XML does not define, has an
/// attribute twice, holds characters that XML cannot hold, has none or several root elements or text beside
/// the root, or is beyond the limits or the policy; the detail tells line and column. `size` tells what there
/// is.
PackageResult checkXml(std::string_view xml, const XmlLimits& limits, const XmlPolicy& policy, XmlSize& size);

}  // namespace vexa::frontend
