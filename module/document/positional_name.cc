#include "module/document/positional_name.h"

#include "backend/text/character_set.h"
#include "backend/tokens/token_sequence.h"

namespace vexa {

namespace {

using Tokens = std::span<const TokenInfoObj>;

bool isEquals(const TokenInfoObj& token) { return token.getOperatorCode() == TokenSequenceBase::equalsSign; }

/// The value behind the keyword at `at`, which is moved onto it; null when "=" or the value is missing.
const TokenInfoObj* takeAssigned(Tokens tokens, std::size_t& at) {
    if (at + 2 >= tokens.size() || !isEquals(tokens[at + 1])) {
        return nullptr;
    }
    at += 2;
    return &tokens[at];
}

}  // namespace

std::optional<PositionalName> readPositionalName(const ParamObj& list, LoneEquals loneEquals,
                                                 ParserMessage& messages) {
    PositionalName result;
    bool nameGiven = false;
    const Tokens tokens = list.getTokenList();
    for (std::size_t at = 0; at < tokens.size(); ++at) {
        const bool isName = tokens[at].spells("NAME");
        if (isName || tokens[at].spells("MINIMIZED")) {
            const TokenInfoObj* const value = takeAssigned(tokens, at);
            if (value == nullptr) {
                return std::nullopt;
            }
            if (isName) {
                result.name = value->getString();
                nameGiven = true;
            } else if (equalsIgnoringCase(value->getString(), "YES")) {
                result.minimized = OutputDocumentMinimized::yes;
            } else if (!equalsIgnoringCase(value->getString(), "NO")) {
                messages.IgnoredParamValue("MINIMIZED", "", value->getString());
            }
            continue;
        }
        if (loneEquals == LoneEquals::isSkipped && isEquals(tokens[at])) {
            ++at;
        }
        if (nameGiven || at >= tokens.size()) {
            return std::nullopt;
        }
        result.name = tokens[at].getString();
        nameGiven = true;
    }
    return result;
}

}  // namespace vexa
