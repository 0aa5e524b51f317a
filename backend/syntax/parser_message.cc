#include "backend/syntax/parser_message.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <utility>
#include <vector>

#include "backend/pivot/bp_text.h"
#include "backend/strings/dictionary.h"
#include "backend/syntax/nearest_keyword.h"
#include "backend/text/character_set.h"

namespace vexa {

namespace {

using Argument = ParserMessageReported::Argument;

/// Markers that a text of a command's own may have; those without an argument show nothing.
constexpr std::size_t kMostGenericArguments = 4;

std::string formatNumber(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.15g", value);
    return text;
}

std::string shown(const Argument& argument) {
    const auto* const text = std::get_if<std::string>(&argument);
    return text != nullptr ? *text : formatNumber(std::get<double>(argument));
}

/// The text in the language of the user, its markers ^1, ^2, ... replaced.
std::string compose(SystemText text, const std::vector<Argument>& arguments) {
    std::vector<std::string> texts;
    texts.reserve(arguments.size());
    for (const Argument& each : arguments) {
        texts.push_back(shown(each));
    }
    return replaceMarkers(translated(text), texts);
}

Argument utf8(std::string_view text) { return toUtf8(text); }

std::vector<Argument> utf8(std::initializer_list<std::string_view> texts) {
    std::vector<Argument> arguments;
    arguments.reserve(texts.size());
    for (const std::string_view each : texts) {
        arguments.push_back(utf8(each));
    }
    return arguments;
}

/// A text for a value of a parameter: one wording when a subcommand is named and one when not.
SystemText choose(std::string_view subcommand, SystemText with, SystemText without) {
    return subcommand.empty() ? without : with;
}

}  // namespace

void ParserMessage::report(std::string_view method, std::vector<Argument> arguments, std::string message,
                           bool warning) {
    if (!commandName_.empty()) {
        message = composed("^1: ^2"_text, {commandName_, std::move(message)});
    }
    OutputLog::current().publish(
        ParserMessageReported{std::string(method), std::move(arguments), std::move(message), warning});
}

void ParserMessage::report(std::string_view method, std::vector<Argument> arguments, SystemText text) {
    std::string message = compose(text, arguments);
    report(method, std::move(arguments), std::move(message), false);
}

void ParserMessage::WrongValueType(std::string_view parameter, std::string_view subcommand) {
    report("WrongValueType", utf8({parameter, subcommand}),
           choose(subcommand, "The value of ^1 in subcommand ^2 is not of the kind that it takes."_text,
                  "The value of ^1 is not of the kind that it takes."_text));
}

void ParserMessage::WrongValueType(std::string_view parameter, std::string_view subcommand,
                                   ExpectedValue expected) {
    std::vector<Argument> arguments = utf8({parameter, subcommand});
    std::string message = compose(
        choose(subcommand, "The value of ^1 in subcommand ^2 is not of the kind that it takes: ^3."_text,
               "The value of ^1 is not of the kind that it takes: ^3."_text),
        {arguments[0], arguments[1], translated(expected.text)});
    report("WrongValueType", std::move(arguments), std::move(message), false);
}

void ParserMessage::WrongValueType(std::string_view parameter, GivenTokens given) {
    report("WrongValueType", utf8({parameter, given.text}),
           given.text.empty() ? "^1 takes one file name, in quotes. Nothing was given."_text
                              : "^1 takes one file name, in quotes. Found: ^2"_text);
}

void ParserMessage::InvalidParam(std::string_view parameter, std::string_view subcommand) {
    report("InvalidParam", utf8({parameter, subcommand}),
           choose(subcommand, "Subcommand ^2: ^1 is not valid here."_text, "^1 is not valid here."_text));
}

void ParserMessage::InvalidParamValue(std::string_view value, std::string_view parameter,
                                      std::string_view subcommand) {
    report("InvalidParamValue", utf8({value, parameter, subcommand}),
           choose(subcommand, "\"^1\" is not a valid value of ^2 in subcommand ^3."_text,
                  "\"^1\" is not a valid value of ^2."_text));
}

void ParserMessage::InvalidParamValue(double value, std::string_view parameter, std::string_view subcommand) {
    report("InvalidParamValue", {value, utf8(parameter), utf8(subcommand)},
           choose(subcommand, "^1 is not a valid value of ^2 in subcommand ^3."_text,
                  "^1 is not a valid value of ^2."_text));
}

void ParserMessage::ParamExclusive(std::string_view parameter, std::string_view other,
                                   std::string_view subcommand) {
    report("ParamExclusive", utf8({parameter, other, subcommand}),
           choose(subcommand, "^1 and ^2 cannot both be given in ^3."_text,
                  "^1 and ^2 cannot both be given."_text));
}

void ParserMessage::ParamNeedParam(std::string_view needed, std::string_view parameter,
                                   std::string_view value) {
    report("ParamNeedParam", utf8({needed, parameter, value}), "^1 is needed where ^2 is ^3."_text);
}

void ParserMessage::ParamNeedInteger(std::string_view parameter, std::string_view subcommand) {
    report("ParamNeedInteger", utf8({parameter, subcommand}),
           choose(subcommand,
                  "Subcommand ^2: ^1 needs a whole number. Positions and instances count from 1."_text,
                  "^1 needs a whole number. Positions and instances count from 1."_text));
}

void ParserMessage::ParamNeedIntegerList(std::string_view parameter, std::string_view subcommand) {
    report("ParamNeedIntegerList", utf8({parameter, subcommand}),
           choose(subcommand, "Subcommand ^2: ^1 needs a list of whole numbers, each 1 or greater."_text,
                  "^1 needs a list of whole numbers, each 1 or greater."_text));
}

void ParserMessage::ParamRequiredForSubCom(std::string_view parameter, std::string_view subcommand) {
    report("ParamRequiredForSubCom", utf8({parameter, subcommand}), "Subcommand ^2 needs ^1."_text);
}

void ParserMessage::ParamNoSubCom(std::string_view parameter) {
    report("ParamNoSubCom", utf8({parameter}), "^1 is not known here."_text);
}

void ParserMessage::ParenRequired(std::string_view name) {
    report("ParenRequired", utf8({name}), "^1: a list in parentheses is needed, such as (1 2)."_text);
}

void ParserMessage::SquareBracketRequired(std::string_view parameter, std::string_view subcommand) {
    report("SquareBracketRequired", utf8({parameter, subcommand}),
           choose(subcommand, "Subcommand ^2: write the value of ^1 in square brackets, as in ^1=[...]."_text,
                  "Write the value of ^1 in square brackets, as in ^1=[...]."_text));
}

void ParserMessage::SubComRequired(std::initializer_list<std::string_view> subcommands) {
    const std::vector<std::string_view> names(subcommands);
    report("SubComRequired", utf8(subcommands),
           compose("At least one of these subcommands is needed: ^1."_text, {listKeywords(names)}), false);
}

void ParserMessage::IgnoredParamValue(std::string_view parameter, std::string_view subcommand,
                                      std::string_view value) {
    std::vector<Argument> arguments = utf8({parameter, subcommand, value});
    std::string message =
        compose(choose(subcommand, "Subcommand ^2: \"^3\" is not a valid value of ^1 and is ignored."_text,
                       "\"^3\" is not a valid value of ^1 and is ignored."_text),
                arguments);
    report("IgnoredParamValue", std::move(arguments), std::move(message), true);
}

void ParserMessage::ParamValueBreakBdry(double value, double lower, int lowerOption, double upper,
                                        int upperOption, std::string_view parameter,
                                        std::string_view subcommand) {
    const double lowerCode = lowerOption;
    const double upperCode = upperOption;
    report("ParamValueBreakBdry",
           {value, lower, lowerCode, upper, upperCode, utf8(parameter), utf8(subcommand)},
           choose(subcommand, "Subcommand ^7: ^6 takes a number from ^2 to ^4. Found ^1."_text,
                  "^6 takes a number from ^2 to ^4. Found ^1."_text));
}

void ParserMessage::FileNameInvalid(std::string_view name) {
    report("FileNameInvalid", utf8({name}), "There is no readable file \"^1\"."_text);
}

void ParserMessage::GenericError(SystemText text, std::initializer_list<std::string_view> arguments) {
    reportGeneric("GenericError", text, arguments, false);
}

void ParserMessage::GenericWarning(SystemText text, std::initializer_list<std::string_view> arguments) {
    reportGeneric("GenericWarning", text, arguments, true);
}

void ParserMessage::reportGeneric(std::string_view method, SystemText text,
                                  std::initializer_list<std::string_view> texts, bool warning) {
    std::vector<Argument> arguments = utf8(texts);
    std::vector<Argument> shownArguments = arguments;
    shownArguments.resize(std::max(texts.size(), kMostGenericArguments), std::string());
    std::string message = compose(text, shownArguments);
    arguments.insert(arguments.begin(), utf8(text));
    report(method, std::move(arguments), std::move(message), warning);
}

}  // namespace vexa
