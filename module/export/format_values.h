// What the formats of OUTPUT EXPORT share: their parameters, and how the values are read into a
// specification.
//
// A value that is refused is reported here; the readers' results say whether the subcommand is still valid.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "backend/syntax/command_spec.h"
#include "backend/syntax/parser_message.h"
#include "backend/viewerxml/export_spec.h"
#include "module/frame/grammar.h"

namespace vexa {

/// A keyword and the number that stands for it in a specification.
struct Choice {
    std::string_view word;
    int number;
};

inline constexpr Choice kYesNoChoices[] = {{"YES", 1}, {"NO", 0}};
inline constexpr Choice kWideTables[] = {{"WRAP", 2}, {"SHRINK", 1}, {"ASIS", 0}};
inline constexpr Choice kImageFormats[] = {{"JPG", 0}, {"BMP", 2}, {"PNG", 1}};

/// The words of the choices, for a row of a grammar.
template <std::size_t N>
[[nodiscard]] constexpr std::array<std::string_view, N> wordsOf(const Choice (&choices)[N]) {
    std::array<std::string_view, N> words{};
    for (std::size_t i = 0; i < N; ++i) {
        words[i] = choices[i].word;
    }
    return words;
}

inline constexpr auto kWideTableWords = wordsOf(kWideTables);
inline constexpr auto kImageFormatWords = wordsOf(kImageFormats);

/// Rows that several formats have.
/// @{
[[nodiscard]] constexpr ParameterRow yesOrNo(std::string_view name) {
    return optionalParameter(name, UPSpecTypes::ParamSpec::word).of(kYesNo);
}

inline constexpr auto kDocumentFile =
    optionalParameter("DOCUMENTFILE", UPSpecTypes::ParamSpec::tokens, "file");
inline constexpr auto kNotesCaptions = yesOrNo("NOTESCAPTIONS");
inline constexpr auto kWideTablesRow =
    optionalParameter("WIDETABLES", UPSpecTypes::ParamSpec::word).of(kWideTableWords);
inline constexpr auto kImageFormatRow =
    optionalParameter("IMAGEFORMAT", UPSpecTypes::ParamSpec::word).of(kImageFormatWords);

inline constexpr auto kImageRoot =
    optionalParameter("IMAGEROOT", UPSpecTypes::ParamSpec::literalOrWord, "root").checked();
inline constexpr auto kPercentSize = ParameterRow{"PERCENTSIZE", UPSpecTypes::ParamSpec::number, false, false}
                                         .boundedBy(atLeast(0), atMost(200))
                                         .checked();

inline constexpr QualifierRow kSizeUnits[] = {
    {"INCHES", UPSpecTypes::ParamSpec::numbers, "width height", atLeast(0), {}, true},
    {"MM", UPSpecTypes::ParamSpec::numbers, "width height", atLeast(0), {}, true}};
inline constexpr QualifierRow kMarginUnits[] = {
    {"INCHES", UPSpecTypes::ParamSpec::number, {}, atLeast(0), {}, true},
    {"MM", UPSpecTypes::ParamSpec::number, {}, atLeast(0), {}, true}};

[[nodiscard]] constexpr ParameterRow sizeRow(std::string_view name) {
    return optionalParameter(name, UPSpecTypes::ParamSpec::qualifiedValue).qualifiedBy(kSizeUnits);
}
[[nodiscard]] constexpr ParameterRow marginRow(std::string_view name) {
    return optionalParameter(name, UPSpecTypes::ParamSpec::qualifiedValue).qualifiedBy(kMarginUnits);
}
/// @}

/// A parameter that takes one keyword, and what its number does to a specification.
template <typename Format>
struct KeywordOption {
    std::string_view parameter;
    std::span<const Choice> choices;
    void (*set)(Format&, int);
};

/// Calls the setter `Set` with the number as what it takes.
template <typename Format, auto Set>
void setNumber(Format& format, int number) {
    const auto call = [&format, number]<typename Owner, typename Value>(void (Owner::*set)(Value)) {
        (format.*set)(static_cast<Value>(number));
    };
    call(Set);
}

/// The number of the value's keyword; the parser lets nothing else through. -1 when the parameter was not
/// given.
[[nodiscard]] int chosenNumber(const SubComObj& given, std::string_view parameter,
                               std::span<const Choice> choices);

/// Reads every option that was given.
template <typename Format>
void readKeywords(const SubComObj& given, std::span<const KeywordOption<Format>> options, Format& format) {
    for (const KeywordOption<Format>& option : options) {
        if (const int number = chosenNumber(given, option.parameter, option.choices); number >= 0) {
            option.set(format, number);
        }
    }
}

/// A number and its text, as typed.
struct TypedNumber {
    double number;
    std::string text;
};

/// Reports that the value `text` of `name` is not above 0.
void reportNotAboveZero(std::string_view text, std::string_view name, ParserMessage& messages);

/// The number of `value`, which must be above 0; else the report of `name` and nothing.
[[nodiscard]] std::optional<TypedNumber> numberAboveZero(const ParamObj& value, std::string_view name,
                                                         ParserMessage& messages);

/// The number of `value`, which must be above 0 and at most 200; else the report of `name` and nothing.
[[nodiscard]] std::optional<TypedNumber> percentage(const ParamObj& value, std::string_view name,
                                                    ParserMessage& messages);

/// What PAGESIZE and SLIDESIZE give: both sides are there whenever two numbers are, valid or not.
struct SizeValue {
    MEASUREMENT_TYPE unit = MEASUREMENT_TYPE::INCHES;
    std::optional<TypedNumber> width, height;
    bool valid = true;
};

/// Reads the size of the parameter `name`, if it was given.
[[nodiscard]] SizeValue readSize(const SubComObj& given, std::string_view name, ParserMessage& messages);

/// Reads TOPMARGIN, BOTTOMMARGIN, LEFTMARGIN and RIGHTMARGIN. False when one was refused.
[[nodiscard]] bool readMargins(const SubComObj& given, ParserMessage& messages, MarginSettings& format);

/// Reads PERCENTSIZE. False when it was refused.
[[nodiscard]] bool readPercentSize(const SubComObj& given, ParserMessage& messages,
                                   PercentSizeSetting& format);

/// Marks a format as present when its subcommand was read without a failure; gives back whether it was.
[[nodiscard]] bool finish(ExportFormat& format, bool valid);

}  // namespace vexa
