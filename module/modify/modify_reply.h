// The output controller's reply to a modification: complaints, and how many items were touched.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vexa {

/// How many items a modification selected, modified and deleted.
struct ModifyCounts {
    std::int32_t selected = 0;
    std::int32_t modified = 0;
    std::int32_t deleted = 0;

    bool operator==(const ModifyCounts&) const = default;
};

/// What a reply says. The views live as long as the reply.
struct ModifyReply {
    std::vector<std::string_view> rejectedFormats;
    std::vector<std::string_view> missingFonts;
    std::optional<ModifyCounts> counts;  ///< nothing when the reply has none
};

/// Reads a reply: the text in parentheses behind each "Invalid format" and "Invalid font", and the counts in
/// the first parentheses of all, whoever they belong to. A count that is missing or no number is 0.
[[nodiscard]] ModifyReply readModifyReply(std::string_view reply);

}  // namespace vexa
