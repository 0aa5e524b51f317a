// How a command describes its grammar to the parser: subcommands, parameters, qualifiers, selection groups.
//
// Texts given to descriptors are not copied: they must outlive them (commands give constants). Adding a
// descriptor under a name that is there already replaces the earlier one, in its place. Names and string
// values are ASCII; a word spells them without regard to case.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace vexa {

/// Codes that say what a subcommand or a parameter takes.
struct UPSpecTypes {
    enum class SubComSpec : int {
        freeTokens = 0,         ///< tokens that the command reads itself
        keywordParameters = 1,  ///< KEYWORD=value ...
        keywordList = 2,        ///< bare keywords, and keyword parameters
    };

    enum class ParamSpec : int {
        keyword = 1,          ///< nothing: the keyword itself
        tokens = 2,           ///< any tokens up to the next parameter or subcommand; may be empty
        word = 3,             ///< one word out of the string values (any word or literal when there are none)
        literalOrWord = 4,    ///< one literal or word
        words = 5,            ///< words out of the string values, one or more
        literals = 6,         ///< literals, one or more
        number = 7,           ///< a number
        numbers = 8,          ///< numbers, one or more
        integer = 9,          ///< an integer
        qualifierList = 26,   ///< SORT(COLPOSITION=2): qualifiers in parentheses, each with '=' and its value
        qualifiedValue = 27,  ///< SIZE=INCHES(2 PROPORTIONAL): one qualifier with its value or values
        qualifiedLists =
            28,  ///< LABELS=[BEGINS('a') EXACT('b')]: qualifiers, each with a list in parentheses
    };

    enum class GroupSpec : int { selection = 0 };

    enum class BracketOptions : int {
        none = 0,      ///< brackets are tokens like any other
        optional = 1,  ///< square brackets round the value may be there and are taken off
        required = 2,  ///< they must be there and are taken off
    };

    enum class BoundaryOption : int {
        inclusive = 1,  ///< the bound itself is allowed
        exclusive = 2,  ///< it is not
    };

    /// What a command reads of a value; it passes over anything else without a word of its own.
    enum class ReadValue : int {
        everything,             ///< nothing is passed over
        text,                   ///< one quoted text or one word, ALL among them
        textButAll,             ///< the same, but ALL is none
        textOrOperator,         ///< one quoted text, word or operator
        quotedTextOrOwnKeyword  ///< one quoted text; of words the string values alone mean something
    };
};

/// True when `word` spells `keyword`, which is ASCII, without regard to the case of ASCII letters.
[[nodiscard]] bool spellsKeyword(std::string_view word, std::string_view keyword);

/// The label of a value that means nothing, so that help texts show the keyword alone.
inline constexpr std::string_view kNoValueLabel = "nothing";

/// A bound of a number.
struct Boundary {
    double value = 0;
    UPSpecTypes::BoundaryOption option = UPSpecTypes::BoundaryOption::inclusive;
};

/// A parameter of a subcommand, or a qualifier of a parameter.
class ParamDescriptor {
  public:
    ParamDescriptor(std::string_view name, UPSpecTypes::ParamSpec spec, bool required, bool valueRequired,
                    UPSpecTypes::BracketOptions brackets = UPSpecTypes::BracketOptions::none);

    ParamDescriptor& addStringValue(std::string_view value);
    /// Replaces the string values by `values`, which must outlive the descriptor; costs no copy.
    ParamDescriptor& setStringValues(std::span<const std::string_view> values);
    ParamDescriptor& setLowerBoundary(double value, UPSpecTypes::BoundaryOption option);
    ParamDescriptor& setUpperBoundary(double value, UPSpecTypes::BoundaryOption option);
    ParamDescriptor& addQualifDesc(ParamDescriptor qualifier);
    ParamDescriptor& setBracketOption(UPSpecTypes::BracketOptions brackets);
    /// The command has a rule of its own for values that do not fit: the parser lets them through, whatever
    /// they are, as long as their brackets are closed (and lists of words hold words or quoted texts). Values
    /// and bounds stay declared, for help and completion. A qualifier may be marked by itself; the mark of
    /// its parameter counts for all of them.
    ParamDescriptor& checkedByCommand();
    /// The parser warns of what the command passes over.
    ParamDescriptor& readOnly(UPSpecTypes::ReadValue what);
    /// What the value is called in help texts, such as "file" or "name".
    ParamDescriptor& setValueLabel(std::string_view label);

    [[nodiscard]] std::string_view name() const { return name_; }
    [[nodiscard]] UPSpecTypes::ParamSpec spec() const { return spec_; }
    [[nodiscard]] bool isRequired() const { return required_; }
    [[nodiscard]] bool isValueRequired() const { return valueRequired_; }
    [[nodiscard]] UPSpecTypes::BracketOptions brackets() const { return brackets_; }
    [[nodiscard]] bool isCheckedByCommand() const { return checkedByCommand_; }
    [[nodiscard]] UPSpecTypes::ReadValue readValue() const { return readValue_; }
    [[nodiscard]] std::string_view valueLabel() const { return valueLabel_; }
    [[nodiscard]] std::vector<std::string_view> stringValues() const;
    [[nodiscard]] bool hasStringValues() const { return !addedValues_.empty() || !constantValues_.empty(); }
    [[nodiscard]] bool hasStringValue(std::string_view value) const;
    [[nodiscard]] const std::optional<Boundary>& lowerBoundary() const { return lower_; }
    [[nodiscard]] const std::optional<Boundary>& upperBoundary() const { return upper_; }
    [[nodiscard]] const std::vector<ParamDescriptor>& qualifiers() const { return qualifiers_; }
    [[nodiscard]] const ParamDescriptor* findQualifier(std::string_view name) const;

  private:
    std::string_view name_;
    std::string_view valueLabel_;
    UPSpecTypes::ParamSpec spec_;
    UPSpecTypes::BracketOptions brackets_;
    bool required_;
    bool valueRequired_;
    bool checkedByCommand_ = false;
    UPSpecTypes::ReadValue readValue_ = UPSpecTypes::ReadValue::everything;
    std::span<const std::string_view> constantValues_;
    std::vector<std::string_view> addedValues_;  // stands for the constant ones as soon as it holds any
    std::optional<Boundary> lower_;
    std::optional<Boundary> upper_;
    std::vector<ParamDescriptor> qualifiers_;
};

/// A subcommand. The one without a name is there in every command: what stands before the first '/'.
class SubComDescriptor {
  public:
    SubComDescriptor(std::string_view name, UPSpecTypes::SubComSpec spec, bool required, bool repeatable);

    SubComDescriptor& addParamDesc(ParamDescriptor parameter);
    /// Makes room for `count` parameters.
    SubComDescriptor& reserveParams(std::size_t count);
    SubComDescriptor& setSubComRequired(bool required);
    SubComDescriptor& setSubComRepeatable(bool repeatable);
    /// The subcommand makes sense without any parameter. (One without a required parameter is accepted empty
    /// anyway.)
    SubComDescriptor& allowSubComEmpty();

    [[nodiscard]] std::string_view name() const { return name_; }
    [[nodiscard]] UPSpecTypes::SubComSpec spec() const { return spec_; }
    [[nodiscard]] bool isRequired() const { return required_; }
    [[nodiscard]] bool isRepeatable() const { return repeatable_; }
    [[nodiscard]] bool mayBeEmpty() const { return mayBeEmpty_; }
    [[nodiscard]] const std::vector<ParamDescriptor>& parameters() const { return parameters_; }
    [[nodiscard]] const ParamDescriptor* findParameter(std::string_view name) const;

  private:
    std::string_view name_;
    UPSpecTypes::SubComSpec spec_;
    bool required_;
    bool repeatable_;
    bool mayBeEmpty_ = false;
    std::vector<ParamDescriptor> parameters_;
};

/// A group of subcommands that repeats as a whole; its leading subcommand opens each occurrence.
class GroupComDescriptor {
  public:
    /// `required`: at least one group must be there.
    GroupComDescriptor(UPSpecTypes::GroupSpec spec, bool required, std::string_view messageText);

    GroupComDescriptor& addSubComDesc(SubComDescriptor subcommand, bool leading);

    [[nodiscard]] UPSpecTypes::GroupSpec spec() const { return spec_; }
    [[nodiscard]] bool isRequired() const { return required_; }
    [[nodiscard]] std::string_view messageText() const { return messageText_; }
    [[nodiscard]] const std::vector<SubComDescriptor>& subcommands() const { return subcommands_; }
    [[nodiscard]] const SubComDescriptor* findSubcommand(std::string_view name) const;
    /// The subcommand that opens the group, or null while none was added.
    [[nodiscard]] const SubComDescriptor* leading() const;

  private:
    UPSpecTypes::GroupSpec spec_;
    bool required_;
    std::string_view messageText_;
    std::string_view leadingName_;
    std::vector<SubComDescriptor> subcommands_;
};

/// A whole command.
class CommandDescriptor {
  public:
    explicit CommandDescriptor(std::string_view name, std::string_view title = {});

    CommandDescriptor& addSubComDesc(SubComDescriptor subcommand);
    CommandDescriptor& addGroupComDesc(GroupComDescriptor group);
    /// Makes room for `count` subcommands.
    CommandDescriptor& reserveSubComs(std::size_t count);

    [[nodiscard]] std::string_view name() const { return name_; }
    [[nodiscard]] std::string_view title() const { return title_; }
    [[nodiscard]] const std::vector<SubComDescriptor>& subcommands() const { return subcommands_; }
    [[nodiscard]] const std::vector<GroupComDescriptor>& groups() const { return groups_; }
    [[nodiscard]] const SubComDescriptor* findSubcommand(std::string_view name) const;

  private:
    std::string_view name_;
    std::string_view title_;
    std::vector<SubComDescriptor> subcommands_;
    std::vector<GroupComDescriptor> groups_;
};

}  // namespace vexa
