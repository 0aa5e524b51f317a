// Reads any bytes as the reply to a modification, and compares with a reading that searches from the start
// each time.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "module/modify/modify_reply.h"

namespace {

constexpr std::size_t kNone = std::string_view::npos;

/// Longer replies are only read: the comparison takes time in the square of their length.
constexpr std::size_t kMostCompared = 4096;

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

std::vector<std::string_view> complaintsOf(std::string_view reply, std::string_view marker) {
    std::vector<std::string_view> values;
    for (std::size_t hit = reply.find(marker); hit != kNone; hit = reply.find(marker, hit + 1)) {
        const std::size_t open = reply.find('(', hit);
        const std::size_t close = reply.find(')', hit);
        if (open != kNone && close != kNone) {
            values.push_back(open < close ? reply.substr(open + 1, close - open - 1) : "");
        }
    }
    return values;
}

/// Every value must lie in the reply, an empty one apart.
void requireInside(std::string_view reply, const std::vector<std::string_view>& values) {
    for (const std::string_view value : values) {
        require(value.empty() ||
                (value.data() >= reply.data() && value.data() + value.size() <= reply.data() + reply.size()));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const vexa::ModifyReply reply = vexa::readModifyReply(text);
    requireInside(text, reply.rejectedFormats);
    requireInside(text, reply.missingFonts);
    const std::size_t open = text.find('(');
    const std::size_t close = text.find(')');
    require(reply.counts.has_value() == (open != kNone && close != kNone && close > open + 1));
    if (size <= kMostCompared) {
        require(reply.rejectedFormats == complaintsOf(text, "Invalid format"));
        require(reply.missingFonts == complaintsOf(text, "Invalid font"));
    }
    return 0;
}
