// Modifications: what a request does to the open documents, and what the log says of it.
#pragma once

#include <string>
#include <string_view>

#include "frontend/controller/carrying.h"
#include "frontend/controller/open_documents.h"
#include "frontend/looks/look_library.h"

namespace vexa::frontend {

/// Carries out a modification and returns its reply (docs/formats/modify-reply.md). A request that cannot be
/// read or carried out changes nothing, says why in the log and counts nothing. In a dry run nothing is
/// changed; tables in the log and the counts of the reply tell what would be.
[[nodiscard]] std::string modifyDocuments(OpenDocuments& documents, LookSource& looks,
                                          std::string_view request, Carrying carrying);

}  // namespace vexa::frontend
