// The parser library's own reports of values that a command refuses.
//
// Every method reports one message into the output log. The arguments are texts in the back end's character
// set, kept in the order of the method's parameters.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "backend/pivot/output_log.h"
#include "backend/text/system_text.h"

namespace vexa {

/// The texts of tokens that were given where one text was expected.
struct GivenTokens {
    std::string_view text;
};

/// What a value should have been, to follow "It takes": "one name".
struct ExpectedValue {
    SystemText text;
};

class ParserMessage {
  public:
    void SetCommandName(std::string_view name) { commandName_ = name; }
    void SetProcedureTitle(std::string_view title) { procedureTitle_ = title; }
    [[nodiscard]] const std::string& commandName() const { return commandName_; }
    [[nodiscard]] const std::string& procedureTitle() const { return procedureTitle_; }

    /// A value of another type than the parameter takes.
    void WrongValueType(std::string_view parameter, std::string_view subcommand);
    /// The same, saying what the parameter takes.
    void WrongValueType(std::string_view parameter, std::string_view subcommand, ExpectedValue expected);
    /// The same, showing what was given in the place of the subcommand.
    void WrongValueType(std::string_view parameter, GivenTokens given);
    void InvalidParam(std::string_view parameter, std::string_view subcommand);
    void InvalidParamValue(std::string_view value, std::string_view parameter, std::string_view subcommand);
    void InvalidParamValue(double value, std::string_view parameter, std::string_view subcommand);
    void ParamExclusive(std::string_view parameter, std::string_view other, std::string_view subcommand);
    void ParamNeedParam(std::string_view needed, std::string_view parameter, std::string_view value);
    void ParamNeedInteger(std::string_view parameter, std::string_view subcommand);
    void ParamNeedIntegerList(std::string_view parameter, std::string_view subcommand);
    void ParamRequiredForSubCom(std::string_view parameter, std::string_view subcommand);
    void ParamNoSubCom(std::string_view parameter);
    void ParenRequired(std::string_view name);
    void SquareBracketRequired(std::string_view parameter, std::string_view subcommand);
    /// `subcommands`: the ones of which at least one is required.
    void SubComRequired(std::initializer_list<std::string_view> subcommands);
    /// A warning: the value is dropped and the command goes on.
    void IgnoredParamValue(std::string_view parameter, std::string_view subcommand, std::string_view value);
    void ParamValueBreakBdry(double value, double lower, int lowerOption, double upper, int upperOption,
                             std::string_view parameter, std::string_view subcommand);
    void FileNameInvalid(std::string_view name);
    /// A text of the command's own, its markers ^1 to ^4 replaced by the arguments.
    void GenericError(SystemText text, std::initializer_list<std::string_view> arguments = {});
    void GenericWarning(SystemText text, std::initializer_list<std::string_view> arguments = {});

  private:
    using Argument = ParserMessageReported::Argument;

    void report(std::string_view method, std::vector<Argument> arguments, std::string message, bool warning);
    void report(std::string_view method, std::vector<Argument> arguments, SystemText text);
    void reportGeneric(std::string_view method, SystemText text,
                       std::initializer_list<std::string_view> texts, bool warning);

    std::string commandName_;
    std::string procedureTitle_;
};

}  // namespace vexa
