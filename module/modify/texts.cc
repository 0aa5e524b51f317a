// TEXTS: the text, and its font, of the selected text items.

#include "module/frame/xml_text.h"
#include "module/modify/color_value.h"
#include "module/modify/font_style.h"
#include "module/modify/modify_spec.h"
#include "module/modify/parameter_values.h"

namespace vexa {

namespace {

using Spec = UPSpecTypes::ParamSpec;

constexpr ParameterRow kParameters[] = {
    optionalParameter("TEXT", Spec::literalOrWord),
    optionalParameter("FONT", Spec::literalOrWord, "font family"),
    optionalParameter("FONTSIZE", Spec::number).checked(),
    optionalParameter("STYLE", Spec::words).of(kStyles),
    optionalParameter("TEXTCOLOR", Spec::tokens, kColorLabel).of(kColorWords),
};

constexpr SubcommandRow kGrammar{"TEXTS", UPSpecTypes::SubComSpec::keywordParameters, false, false,
                                 kParameters};

struct TextModifySettings {
    std::string expression;  ///< expanded and escaped
    std::string fontFamily;  ///< as written, neither in capitals nor escaped; this is meant
    FontStyle style;
    double fontSize = -1.0;  ///< points
    std::optional<Color> color;
};

bool read(const SubComObj& given, ParserMessage& messages, TextModifySettings& texts) {
    texts.expression = expandedTextOf(given, "TEXT");
    texts.fontFamily = textOf(given, "FONT");
    if (const ParamObj* const size = given.getParamObj("FONTSIZE")) {
        texts.fontSize = size->getDoubleValue().value_or(texts.fontSize);
    }
    if (const ParamObj* const style = given.getParamObj("STYLE")) {
        texts.style = readFontStyle(*style);
    }
    const ParamObj* const color = given.getParamObj("TEXTCOLOR");
    if (color != nullptr && !ParseColorValue(*color, texts.color.emplace())) {
        // Names TEXT and not TEXTS; this is meant.
        messages.GenericError(kNoColor, {"TEXT"});
        return false;
    }
    return true;
}

void write(const TextModifySettings& texts, std::string& request) {
    request += "<modifyText";
    appendTextIfAny(request, "expression", texts.expression);
    appendTextIfAny(request, "fontFamily", texts.fontFamily);
    if (texts.color) {
        appendColor(*texts.color, "text", request);
    }
    if (texts.fontSize > 0.0) {
        appendNumber(request, "fontSize", texts.fontSize);
    }
    appendStyle(texts.style.bold, "fontBold", request);
    appendStyle(texts.style.italic, "fontItalic", request);
    appendStyle(texts.style.underline, "fontUnderline", request);
    request += "/>";
}

}  // namespace

std::unique_ptr<ModifyHandler> makeTextsHandler() {
    return std::make_unique<SingleHandler<TextModifySettings>>(kGrammar, read, write);
}

}  // namespace vexa
