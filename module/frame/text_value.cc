#include "module/frame/text_value.h"

#include "backend/tokens/token_sequence.h"

namespace vexa {

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

}  // namespace vexa
