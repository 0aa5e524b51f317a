// EPS: images for print.

#include <algorithm>
#include <iterator>

#include "module/export/format_values.h"
#include "module/export/formats.h"
#include "module/export/targets.h"

namespace vexa {

namespace {

using Spec = UPSpecTypes::ParamSpec;
using Units = ExportEPSSpec::UNITS;

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

/// In the order of `ExportEPSSpec::UNITS`.
constexpr std::string_view kUnitNames[] = {"PERCENT", "CENTIMETERS", "INCHES", "POINTS"};

Units unitOf(const QualifierObj& width) {
    const auto* const found =
        std::find_if(std::begin(kUnitNames), std::end(kUnitNames),
                     [&width](std::string_view each) { return AreStringsEqualCase(width.name(), each); });
    return static_cast<Units>(found - std::begin(kUnitNames));
}

bool readWidth(const SubComObj& given, ParserMessage& messages, ExportEPSSpec& eps) {
    const ParamObj* const parameter = given.getParamObj("WIDTH");
    const std::optional<QualifierObj> width = parameter != nullptr ? parameter->getQualifier() : std::nullopt;
    if (!width) {
        return true;  // the parser lets no other shape through
    }
    const Units unit = unitOf(*width);
    const std::optional<TypedNumber> number =
        unit == Units::PERCENT ? percentage(*width, "PERCENT", messages)
                               : numberAboveZero(*width, kUnitNames[static_cast<int>(unit)], messages);
    if (number) {
        eps.setWidth(unit, number->number, number->text);
    }
    return number.has_value();
}

}  // namespace

constexpr SubcommandRow kEpsGrammar{"EPS", UPSpecTypes::SubComSpec::keywordParameters, false, false,
                                    kParameters};

bool readEps(const CommandSpec& command, ParserMessage& messages, ExportEPSSpec& eps, bool rootRequired) {
    const SubComObj* const given = command.getSubComObj("EPS");
    if (given == nullptr) {
        return false;
    }
    readImageRoot(*given, rootRequired, messages, eps);
    const bool valid = readWidth(*given, messages, eps);
    readKeywords<ExportEPSSpec>(*given, kKeywords, eps);
    return finish(eps, valid);
}

}  // namespace vexa
