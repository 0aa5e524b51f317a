// The units of an XLIFF 1.2 file. For the string-table library's own files.
#pragma once

#include <string_view>
#include <vector>

#include "backend/platform/file_system.h"
#include "backend/strings/string_table.h"

namespace vexa {

/// Fills `entries` with the units of an XLIFF file, in their order, as UTF-8. A unit's key is its id; its
/// value the target, or the source where there is no target or an empty one; its gloss the notes, one a line.
/// Inline elements within a text count with the text that they hold; alternative translations do not count; a
/// unit without an id is left out. Elements of other namespaces are ignored.
/// Fails, with no entries, for what is not well-formed to its end, is no XLIFF, is nested deeper than 64
/// elements, or has a document type declaration that says more than a name; so there are no entities but the
/// five of XML. Nothing but `bytes` is read, the time grows with their number, and no exception comes out.
FileResult readXliff(std::string_view bytes, std::vector<keyValueGloss>& entries);

}  // namespace vexa
