#include "module/export/format_values.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace vexa {

namespace {

constexpr SystemText kNotAboveZero = "Value ^1 should be greater than ^2 for parameter ^3..."_text;
constexpr SystemText kOutOfBounds =
    "Value ^1 breaks lower boundary ^2 or upper boundary ^3 for parameter ^4..."_text;
// Is spelt like this and names ^2, which no argument fills; both are meant.
constexpr SystemText kTwoDimensions = "Parameter ^2 requrires two dimensions, width and height."_text;

constexpr double kGreatestPercentage = 200.0;

/// A unit of pages and margins, by its keyword.
struct Unit {
    MEASUREMENT_TYPE type;
    std::string_view keyword;
};

constexpr Unit kInches{MEASUREMENT_TYPE::INCHES, "INCHES"};
constexpr Unit kMillimetres{MEASUREMENT_TYPE::MM, "MM"};

const Unit& unitOf(const QualifierObj& value) {
    return AreStringsEqualCase(value.name(), kMillimetres.keyword) ? kMillimetres : kInches;
}

using SetMargin = void (MarginSettings::*)(MEASUREMENT_TYPE, double, std::string_view);

struct Margin {
    std::string_view parameter;
    SetMargin set;
};

constexpr Margin kMargins[] = {
    {"TOPMARGIN", &MarginSettings::setTopMargin},
    {"BOTTOMMARGIN", &MarginSettings::setBottomMargin},
    {"LEFTMARGIN", &MarginSettings::setLeftMargin},
    {"RIGHTMARGIN", &MarginSettings::setRightMargin},
};

bool readMargin(const ParamObj& parameter, SetMargin set, ParserMessage& messages, MarginSettings& format) {
    const std::optional<QualifierObj> value = parameter.getQualifier();
    if (!value) {
        return false;  // the parser lets no other shape through
    }
    const Unit& unit = unitOf(*value);
    const std::optional<TypedNumber> number = numberAboveZero(*value, unit.keyword, messages);
    if (number) {
        (format.*set)(unit.type, number->number, number->text);
    }
    return number.has_value();
}

}  // namespace

int chosenNumber(const SubComObj& given, std::string_view parameter, std::span<const Choice> choices) {
    const ParamObj* const value = given.getParamObj(parameter);
    const auto chosen = std::find_if(choices.begin(), choices.end(), [value](const Choice& each) {
        return value != nullptr && value->isStringValue(each.word);
    });
    return chosen == choices.end() ? -1 : chosen->number;
}

void reportNotAboveZero(std::string_view text, std::string_view name, ParserMessage& messages) {
    messages.GenericError(kNotAboveZero, {text, "0", name});
}

std::optional<TypedNumber> numberAboveZero(const ParamObj& value, std::string_view name,
                                           ParserMessage& messages) {
    const std::string text = value.joinedTokens();
    const std::optional<double> number = value.getDoubleValue();
    if (number && *number > 0.0) {
        return TypedNumber{*number, text};
    }
    reportNotAboveZero(text, name, messages);
    return std::nullopt;
}

std::optional<TypedNumber> percentage(const ParamObj& value, std::string_view name, ParserMessage& messages) {
    const std::string text = value.joinedTokens();
    const std::optional<double> number = value.getDoubleValue();
    if (number && *number > 0.0 && *number <= kGreatestPercentage) {
        return TypedNumber{*number, text};
    }
    // The bound and the name run together in one argument, and there is no fourth; this is meant.
    messages.GenericError(kOutOfBounds, {text, "0", std::string("200").append(name)});
    return std::nullopt;
}

SizeValue readSize(const SubComObj& given, std::string_view name, ParserMessage& messages) {
    SizeValue size;
    const ParamObj* const parameter = given.getParamObj(name);
    if (parameter == nullptr) {
        return size;
    }
    const std::optional<QualifierObj> value = parameter->getQualifier();
    std::vector<double> numbers;
    if (!value || !value->getNumberList(numbers) || numbers.size() != 2) {
        messages.GenericError(kTwoDimensions, {name});
        size.valid = false;
        return size;
    }
    const Unit& unit = unitOf(*value);
    size.unit = unit.type;
    size.width = TypedNumber{numbers[0], std::string(value->getTokenObj(0).getString())};
    size.height = TypedNumber{numbers[1], std::string(value->getTokenObj(1).getString())};
    size.valid = numbers[0] > 0.0 && numbers[1] > 0.0;
    if (!size.valid) {
        reportNotAboveZero(numbers[0] > 0.0 ? size.height->text : size.width->text, unit.keyword, messages);
    }
    return size;
}

bool readMargins(const SubComObj& given, ParserMessage& messages, MarginSettings& format) {
    bool valid = true;
    for (const Margin& margin : kMargins) {
        const ParamObj* const parameter = given.getParamObj(margin.parameter);
        valid = (parameter == nullptr || readMargin(*parameter, margin.set, messages, format)) && valid;
    }
    return valid;
}

bool readPercentSize(const SubComObj& given, ParserMessage& messages, PercentSizeSetting& format) {
    const ParamObj* const parameter = given.getParamObj("PERCENTSIZE");
    if (parameter == nullptr) {
        return true;
    }
    const std::optional<TypedNumber> percent = percentage(*parameter, "PERCENTSIZE", messages);
    if (percent) {
        format.setPercentSize(percent->number, percent->text);
    }
    return percent.has_value();
}

bool finish(ExportFormat& format, bool valid) {
    if (valid) {
        format.setOptionPresent(true);
    }
    return valid;
}

}  // namespace vexa
