#include "backend/syntax/nearest_keyword.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>
#include <utility>

#include "backend/strings/dictionary.h"
#include "backend/text/ascii.h"

namespace vexa {

namespace {

/// Longer words than this are no misspelt keywords.
constexpr std::size_t kLongestWord = 40;

/// Edits between two words of at most `kLongestWord` bytes.
std::size_t distance(std::string_view left, std::string_view right) {
    using Row = std::array<std::size_t, kLongestWord + 1>;
    Row beforeLast{};
    Row last{};
    Row row{};
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= left.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= right.size(); ++j) {
            const char a = asciiLower(left[i - 1]);
            const char b = asciiLower(right[j - 1]);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a == b ? 0 : 1)});
            if (i > 1 && j > 1 && a == asciiLower(right[j - 2]) && asciiLower(left[i - 2]) == b) {
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
            }
        }
        beforeLast = last;
        last = row;
    }
    return last[right.size()];
}

}  // namespace

std::string_view nearestKeyword(std::string_view word, std::span<const std::string_view> candidates) {
    std::string_view nearest;
    std::size_t best = std::max<std::size_t>(1, word.size() / 3) + 1;
    if (word.size() < 2 || word.size() > kLongestWord) {
        return nearest;
    }
    for (const std::string_view candidate : candidates) {
        const std::size_t edits = candidate.size() > kLongestWord ? best : distance(word, candidate);
        if (edits < best) {
            best = edits;
            nearest = candidate;
        }
    }
    return nearest;
}

std::string listKeywords(std::span<const std::string_view> keywords) {
    if (keywords.empty()) {
        return {};
    }
    std::string list(keywords.front());
    for (const std::string_view keyword :
         keywords.subspan(1, keywords.size() - std::min<std::size_t>(keywords.size(), 2))) {
        list.append(", ").append(keyword);
    }
    return keywords.size() == 1 ? list
                                : composed("^1 or ^2"_text, {std::move(list), std::string(keywords.back())});
}

}  // namespace vexa
