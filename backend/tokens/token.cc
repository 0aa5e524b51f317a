#include "backend/tokens/token.h"

#include <charconv>

#include "backend/text/character_set.h"
#include "backend/tokens/token_sequence.h"

namespace vexa {

namespace {

/// The whole of `text` as a number, a leading plus sign allowed.
template <typename Number>
std::optional<Number> parseWhole(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    Number value{};
    const char* const end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stopped != end) {
        return std::nullopt;
    }
    return value;
}

}  // namespace

static_assert(kAllOperatorCode == TokenSequenceBase::all);

std::string TokenInfoObj::getUpperString() const { return toUpperCase(getString()); }

std::optional<std::int32_t> TokenInfoObj::getIntegerValue() const {
    return isNumber() ? parseWhole<std::int32_t>(getString()) : std::nullopt;
}

std::optional<double> TokenInfoObj::getDoubleValue() const {
    return isNumber() ? parseWhole<double>(getString()) : std::nullopt;
}

bool TokenInfoObj::spells(std::string_view text) const {
    return isWordLike() && equalsIgnoringCase(getString(), text);
}

}  // namespace vexa
