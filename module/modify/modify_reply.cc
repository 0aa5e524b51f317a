#include "module/modify/modify_reply.h"

#include <algorithm>
#include <cstddef>

#include "module/modify/parameter_values.h"

namespace vexa {

namespace {

constexpr std::size_t kNotFound = std::string_view::npos;

/// Finds a character at or behind places that only grow, in one pass over the text.
class ForwardFinder {
  public:
    ForwardFinder(std::string_view text, char character) : text_(text), character_(character) {}

    std::size_t findFrom(std::size_t place) {
        if (!searched_ || (found_ != kNotFound && found_ < place)) {
            found_ = text_.find(character_, place);
            searched_ = true;
        }
        return found_;
    }

  private:
    std::string_view text_;
    char character_;
    bool searched_ = false;
    std::size_t found_ = kNotFound;
};

/// The value of each complaint; a complaint without both parentheses behind it has none and is left out.
std::vector<std::string_view> readComplaints(std::string_view reply, std::string_view marker) {
    std::vector<std::string_view> values;
    ForwardFinder opening(reply, '(');
    ForwardFinder closing(reply, ')');
    for (std::size_t hit = reply.find(marker); hit != kNotFound; hit = reply.find(marker, hit + 1)) {
        const std::size_t open = opening.findFrom(hit);
        const std::size_t close = closing.findFrom(hit);
        if (open == kNotFound || close == kNotFound) {
            break;  // there is none behind later complaints either
        }
        // Parentheses the wrong way round have nothing between them.
        values.push_back(close > open ? reply.substr(open + 1, close - open - 1) : std::string_view());
    }
    return values;
}

/// Complaints are not passed over: the counts of a reply that begins with one are looked for in its value.
/// This is meant.
std::optional<ModifyCounts> readCounts(std::string_view reply) {
    const std::size_t open = reply.find('(');
    const std::size_t close = reply.find(')');
    if (open == kNotFound || close == kNotFound || close <= open + 1) {
        return std::nullopt;
    }
    std::string_view fields = reply.substr(open + 1, close - open - 1);
    ModifyCounts counts;
    counts.selected = leadingInteger(takeField(fields));
    counts.modified = leadingInteger(takeField(fields));
    counts.deleted = leadingInteger(fields);
    return counts;
}

}  // namespace

ModifyReply readModifyReply(std::string_view reply) {
    return {readComplaints(reply, "Invalid format"), readComplaints(reply, "Invalid font"),
            readCounts(reply)};
}

}  // namespace vexa
