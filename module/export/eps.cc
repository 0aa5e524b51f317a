// EPS: images for print, with a width of their own.

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <iterator>

#include "module/export/read_format.h"

namespace vexa {

namespace {

using Spec = UPSpecTypes::ParamSpec;
using Units = ExportEPSSpec::UNITS;

/// In the order of their numbers.
constexpr QualifierRow kWidthUnits[] = {{"PERCENT", Spec::number, {}, above(0), atMost(200), true},
                                        {"CENTIMETERS", Spec::number, {}, above(0), {}, true},
                                        {"INCHES", Spec::number, {}, above(0), {}, true},
                                        {"POINTS", Spec::number, {}, above(0), {}, true}};
constexpr Choice kFontHandlings[] = {{"REFERENCES", 0}, {"CURVES", 1}};
constexpr auto kFontHandlingWords = wordsOf(kFontHandlings);

constexpr ParameterRow kParameters[] = {
    kImageRoot,
    optionalParameter("WIDTH", Spec::qualifiedValue).qualifiedBy(kWidthUnits),
    yesOrNo("PREVIEW"),
    optionalParameter("FONTHANDLING", Spec::word).of(kFontHandlingWords),
};

constexpr KeywordOption<ExportEPSSpec> kKeywords[] = {
    {"PREVIEW", kYesNoChoices, setNumber<ExportEPSSpec, &ExportEPSSpec::setPreview>},
    {"FONTHANDLING", kFontHandlings, setNumber<ExportEPSSpec, &ExportEPSSpec::setFontHandling>},
};

/// The place of the unit among the qualifiers, which is its number.
std::size_t unitOf(const QualifierObj& width) {
    const auto* const found = std::find_if(
        std::begin(kWidthUnits), std::end(kWidthUnits),
        [&width](const QualifierRow& each) { return AreStringsEqualCase(width.name(), each.name); });
    assert(found != std::end(kWidthUnits));  // the parser lets no other unit through
    return static_cast<std::size_t>(found - std::begin(kWidthUnits));
}

bool readWidth(const SubComObj& given, ParserMessage& messages, ExportEPSSpec& eps) {
    const ParamObj* const parameter = given.getParamObj("WIDTH");
    const std::optional<QualifierObj> width = parameter != nullptr ? parameter->getQualifier() : std::nullopt;
    if (!width) {
        return true;  // the parser lets no other shape through
    }
    const std::size_t place = unitOf(*width);
    const auto unit = static_cast<Units>(place);
    const std::optional<TypedNumber> number =
        unit == Units::PERCENT ? percentage(*width, "PERCENT", messages)
                               : numberAboveZero(*width, kWidthUnits[place].name, messages);
    if (number) {
        eps.setWidth(unit, number->number, number->text);
    }
    return number.has_value();
}

}  // namespace

constexpr SubcommandRow kEpsGrammar{"EPS", UPSpecTypes::SubComSpec::keywordParameters, false, false,
                                    kParameters};

bool readEps(const CommandSpec& command, ParserMessage& messages, ExportEPSSpec& eps, bool rootRequired) {
    return readImages<ExportEPSSpec>(kEpsGrammar, command, messages, eps, rootRequired, kKeywords, readWidth);
}

}  // namespace vexa
