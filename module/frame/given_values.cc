#include "module/frame/given_values.h"

#include <algorithm>
#include <array>

#include "backend/adapter/client_adapter.h"
#include "backend/paths/file_specification.h"
#include "backend/text/character_set.h"
#include "backend/tokens/token_sequence.h"

namespace vexa {

namespace {

using PathBuffer = std::array<char, kFileSpecificationCapacity>;

/// Begins with a separator, or has a colon as its second character.
bool isWhole(const std::string& file) {
    if (file.starts_with('\\') || file.starts_with('/')) {
        return true;
    }
    const int first = VEXAMBmbclen_A(file.c_str());
    return first > 0 && file.c_str()[first] == ':';
}

}  // namespace

std::optional<TextValue> textValue(const ParamObj& parameter) {
    TextValue value;
    if (parameter.getStringOrLiteral(value.text, value.isLiteral)) {
        return value;
    }
    if (parameter.isOperatorValue(TokenSequenceBase::all)) {
        return TextValue{parameter.getStringToken()};
    }
    return std::nullopt;
}

std::string readFileSpecification(const ParamObj& file, std::string_view keyword, ParserMessage& messages) {
    std::string text(file.getStringToken());
    if (text.empty()) {
        const std::string joined = file.joinedTokens();
        messages.WrongValueType(keyword, GivenTokens{joined});
        return text;
    }
    PathBuffer buffer;
    if (ExpandDirectoryHandle(text.c_str(), buffer.data(), static_cast<int>(text.size())) == 0) {
        text = buffer.data();
    }
    return normaliseFileSpec(std::move(text));
}

std::string normaliseFileSpec(std::string file) {
    ClientAdapter* const adapter = GetAdapter();
    if (adapter != nullptr && !adapter->isLocalMode() && !isWhole(file)) {
        PathBuffer buffer;
        if (ExpandFileSpecification(file.c_str(), buffer.data()) == 0) {
            file = buffer.data();
        }
    }
    std::replace(file.begin(), file.end(), '/', '\\');
    return file;
}

}  // namespace vexa
