// Reads the text of a modification, which need not be XML.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>

#include "frontend/requests/modify_request.h"

namespace vexa::frontend {

/// Why a text cannot be read as a request, and where.
struct RequestRefusal {
    std::size_t offset = 0;  ///< bytes before the place
    std::string element;     ///< the innermost one at the place; empty before the first
    std::string attribute;   ///< empty where the place is in none
    std::string message;     ///< a sentence for the user, in the language of the user
};

/// Reads `text`, which docs/formats/modify-request.md describes, also where it is no XML. What has only one
/// reading is taken, and everything else is refused: a request is read whole or not at all. Bytes that are no
/// UTF-8 become U+FFFD, but for the names that come in the back end's character set, which are converted, and
/// the XML of a look, which stays as it is. Takes time and memory in proportion to the text.
[[nodiscard]] std::variant<ModifyRequest, RequestRefusal> readModifyRequest(std::string_view text);

}  // namespace vexa::frontend
