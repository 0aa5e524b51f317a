// OBJECTPROPERTIES: visibility, outline label and size of the selected items.

#include <algorithm>

#include "module/frame/xml_text.h"
#include "module/modify/modify_spec.h"
#include "module/modify/parameter_values.h"

namespace vexa {

namespace {

using Spec = UPSpecTypes::ParamSpec;

constexpr std::string_view kVisibilities[] = {"ASIS", "YES", "NO"};
constexpr std::string_view kSides = "width height";
constexpr QualifierRow kSizeUnits[] = {{"PERCENT", Spec::tokens, kSides},
                                       {"CENTIMETERS", Spec::tokens, kSides},
                                       {"INCHES", Spec::tokens, kSides},
                                       {"POINTS", Spec::tokens, kSides}};

constexpr ParameterRow kParameters[] = {
    optionalParameter("VISIBLE", Spec::word).of(kVisibilities),
    optionalParameter("OUTLINELABEL", Spec::literalOrWord),
    optionalParameter("SIZE", Spec::qualifiedValue).qualifiedBy(kSizeUnits),
};

constexpr SubcommandRow kGrammar{"OBJECTPROPERTIES", UPSpecTypes::SubComSpec::keywordParameters, false, false,
                                 kParameters};

constexpr double kNotSet = -1.0;
constexpr double kProportional = 0.0;
constexpr double kPercent = 100.0;
constexpr double kGreatestPercent = 400.0;
constexpr double kGreatestPoints = 2000.0;
// The two bounds differ; this is meant: a height of 0 leaves the height alone.
constexpr double kLeastWidth = 1.0;
constexpr double kLeastHeight = 0.0;

struct Size {
    double width = kNotSet;
    double height = kNotSet;
};

struct ObjectProperties {
    std::string_view visible;  ///< the value of the attribute, empty when it stays as it is
    std::string label;         ///< expanded and escaped
    Size points;
    Size percent;
};

std::string_view readVisibility(const SubComObj& given) {
    const ParamObj* const visible = given.getParamObj("VISIBLE");
    if (visible == nullptr) {
        return {};
    }
    return visible->isStringValue("ASIS")  ? "asis"
           : visible->isStringValue("YES") ? "yes"
           : visible->isStringValue("NO")  ? "no"
                                           : "";
}

/// One side of a size; false when it was refused.
bool readSide(const TokenInfoObj& token, double factor, double least, SystemText tooSmall,
              ParserMessage& messages, double& side) {
    if (const std::optional<double> number = token.getDoubleValue()) {
        side = *number * factor;
        if (side < least) {
            messages.GenericError(tooSmall);
        }
        return side >= least;
    }
    if (token.spells("PROPORTIONAL")) {
        side = kProportional;
        return true;
    }
    messages.InvalidParam("SIZE", "OBJECTPROPERTIES");
    return false;
}

bool isInRange(const ObjectProperties& properties) {
    return std::max(properties.percent.width, properties.percent.height) <= kGreatestPercent &&
           std::max(properties.points.width, properties.points.height) <= kGreatestPoints;
}

/// The range is checked, and reported, also when a side was refused.
bool readSize(const ParamObj& given, ParserMessage& messages, ObjectProperties& properties) {
    const std::optional<QualifierObj> size = given.getQualifier();
    if (!size || size->getTokenListSize() != 2) {
        messages.InvalidParam("SIZE", "OBJECTPROPERTIES");
        return false;
    }
    const bool inPercent = AreStringsEqualCase(size->name(), "PERCENT");
    const double factor = inPercent ? kPercent : pointsOfUnit(size->name()).value_or(1.0);
    Size& points = properties.points;
    bool valid = readSide(size->getTokenObj(0), factor, kLeastWidth,
                          "Value for WIDTH must be a positive number"_text, messages, points.width) &&
                 readSide(size->getTokenObj(1), factor, kLeastHeight,
                          "Value for HEIGHT must be a positive number"_text, messages, points.height);
    if (inPercent) {
        properties.percent = {points.width / kPercent, points.height / kPercent};
        points = {};
    }
    if (!isInRange(properties)) {
        messages.InvalidParam("SIZE", "OBJECTPROPERTIES");
        valid = false;
    }
    return valid;
}

bool read(const SubComObj& given, ParserMessage& messages, ObjectProperties& properties) {
    properties.visible = readVisibility(given);
    properties.label = expandedTextOf(given, "OUTLINELABEL");
    const ParamObj* const size = given.getParamObj("SIZE");
    return size == nullptr || readSize(*size, messages, properties);
}

void writeSide(std::string_view name, double side, std::string& request) {
    if (side > 0.0) {
        appendNumber(request, name, side);
    }
}

void write(const ObjectProperties& properties, std::string& request) {
    request += "<objectProperties";
    if (!properties.visible.empty()) {
        appendAsIs(request, "visible", properties.visible);
    }
    writeSide("sizeWidth", properties.points.width, request);
    writeSide("sizeHeight", properties.points.height, request);
    writeSide("sizeWidthPCT", properties.percent.width, request);
    writeSide("sizeHeightPCT", properties.percent.height, request);
    appendTextIfAny(request, "label", properties.label);
    request += "/>";
}

}  // namespace

std::unique_ptr<ModifyHandler> makeObjectPropertiesHandler() {
    return std::make_unique<SingleHandler<ObjectProperties>>(kGrammar, read, write);
}

}  // namespace vexa
