// The reply to a modification. docs/formats/modify-reply.md describes it.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vexa::frontend {

struct ModifyReply {
    std::size_t selected = 0;
    std::size_t modified = 0;
    std::size_t deleted = 0;
    std::vector<std::string> invalidFormats;  ///< as the request has them, in UTF-8
    std::vector<std::string> invalidFonts;
};

/// `reply` as the text that answers a request, in the back end's character set: the counts, then a line for
/// each complaint. Line ends and closing parentheses of a format or a font are left out, since who reads the
/// reply would take them for the end.
[[nodiscard]] std::string writeModifyReply(const ModifyReply& reply);

}  // namespace vexa::frontend
