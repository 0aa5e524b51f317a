#include "backend/syntax/descriptors.h"

#include <algorithm>
#include <utility>

#include "backend/text/ascii.h"

namespace vexa {

namespace {

template <typename Descriptor>
const Descriptor* findByName(const std::vector<Descriptor>& descriptors, std::string_view name) {
    const auto found = std::find_if(descriptors.begin(), descriptors.end(), [name](const Descriptor& each) {
        return spellsKeyword(name, each.name());
    });
    return found == descriptors.end() ? nullptr : &*found;
}

/// Adds `added`, or puts it in the place of the one that has its name.
template <typename Descriptor>
void addOrReplace(std::vector<Descriptor>& descriptors, Descriptor added) {
    const auto same = std::find_if(descriptors.begin(), descriptors.end(),
                                   [&added](const Descriptor& each) { return each.name() == added.name(); });
    if (same == descriptors.end()) {
        descriptors.push_back(std::move(added));
    } else {
        *same = std::move(added);
    }
}

}  // namespace

bool spellsKeyword(std::string_view word, std::string_view keyword) {
    return word.size() == keyword.size() &&
           std::equal(word.begin(), word.end(), keyword.begin(),
                      [](char left, char right) { return asciiLower(left) == asciiLower(right); });
}

ParamDescriptor::ParamDescriptor(std::string_view name, UPSpecTypes::ParamSpec spec, bool required,
                                 bool valueRequired, UPSpecTypes::BracketOptions brackets)
    : name_(name), spec_(spec), brackets_(brackets), required_(required), valueRequired_(valueRequired) {}

ParamDescriptor& ParamDescriptor::addStringValue(std::string_view value) {
    if (addedValues_.empty()) {
        addedValues_.assign(constantValues_.begin(), constantValues_.end());
    }
    addedValues_.push_back(value);
    return *this;
}

ParamDescriptor& ParamDescriptor::setStringValues(std::span<const std::string_view> values) {
    addedValues_.clear();
    constantValues_ = values;
    return *this;
}

ParamDescriptor& ParamDescriptor::setLowerBoundary(double value, UPSpecTypes::BoundaryOption option) {
    lower_ = Boundary{value, option};
    return *this;
}

ParamDescriptor& ParamDescriptor::setUpperBoundary(double value, UPSpecTypes::BoundaryOption option) {
    upper_ = Boundary{value, option};
    return *this;
}

ParamDescriptor& ParamDescriptor::addQualifDesc(ParamDescriptor qualifier) {
    addOrReplace(qualifiers_, std::move(qualifier));
    return *this;
}

ParamDescriptor& ParamDescriptor::setBracketOption(UPSpecTypes::BracketOptions brackets) {
    brackets_ = brackets;
    return *this;
}

ParamDescriptor& ParamDescriptor::checkedByCommand() {
    checkedByCommand_ = true;
    return *this;
}

ParamDescriptor& ParamDescriptor::readOnly(UPSpecTypes::ReadValue what) {
    readValue_ = what;
    return *this;
}

ParamDescriptor& ParamDescriptor::setValueLabel(std::string_view label) {
    valueLabel_ = label;
    return *this;
}

std::vector<std::string_view> ParamDescriptor::stringValues() const {
    return addedValues_.empty()
               ? std::vector<std::string_view>(constantValues_.begin(), constantValues_.end())
               : addedValues_;
}

bool ParamDescriptor::hasStringValue(std::string_view value) const {
    const std::span<const std::string_view> values =
        addedValues_.empty() ? constantValues_ : std::span<const std::string_view>(addedValues_);
    return std::any_of(values.begin(), values.end(),
                       [value](std::string_view each) { return spellsKeyword(value, each); });
}

const ParamDescriptor* ParamDescriptor::findQualifier(std::string_view name) const {
    return findByName(qualifiers_, name);
}

SubComDescriptor::SubComDescriptor(std::string_view name, UPSpecTypes::SubComSpec spec, bool required,
                                   bool repeatable)
    : name_(name), spec_(spec), required_(required), repeatable_(repeatable) {}

SubComDescriptor& SubComDescriptor::addParamDesc(ParamDescriptor parameter) {
    addOrReplace(parameters_, std::move(parameter));
    return *this;
}

SubComDescriptor& SubComDescriptor::reserveParams(std::size_t count) {
    parameters_.reserve(count);
    return *this;
}

SubComDescriptor& SubComDescriptor::setSubComRequired(bool required) {
    required_ = required;
    return *this;
}

SubComDescriptor& SubComDescriptor::setSubComRepeatable(bool repeatable) {
    repeatable_ = repeatable;
    return *this;
}

SubComDescriptor& SubComDescriptor::allowSubComEmpty() {
    mayBeEmpty_ = true;
    return *this;
}

const ParamDescriptor* SubComDescriptor::findParameter(std::string_view name) const {
    return findByName(parameters_, name);
}

GroupComDescriptor::GroupComDescriptor(UPSpecTypes::GroupSpec spec, bool required,
                                       std::string_view messageText)
    : spec_(spec), required_(required), messageText_(messageText) {}

GroupComDescriptor& GroupComDescriptor::addSubComDesc(SubComDescriptor subcommand, bool leading) {
    if (leading) {
        leadingName_ = subcommand.name();
    }
    addOrReplace(subcommands_, std::move(subcommand));
    return *this;
}

const SubComDescriptor* GroupComDescriptor::findSubcommand(std::string_view name) const {
    return findByName(subcommands_, name);
}

const SubComDescriptor* GroupComDescriptor::leading() const {
    return leadingName_.empty() ? nullptr : findSubcommand(leadingName_);
}

CommandDescriptor::CommandDescriptor(std::string_view name, std::string_view title)
    : name_(name), title_(title) {}

CommandDescriptor& CommandDescriptor::addSubComDesc(SubComDescriptor subcommand) {
    addOrReplace(subcommands_, std::move(subcommand));
    return *this;
}

CommandDescriptor& CommandDescriptor::addGroupComDesc(GroupComDescriptor group) {
    groups_.push_back(std::move(group));
    return *this;
}

CommandDescriptor& CommandDescriptor::reserveSubComs(std::size_t count) {
    subcommands_.reserve(count);
    return *this;
}

const SubComDescriptor* CommandDescriptor::findSubcommand(std::string_view name) const {
    return findByName(subcommands_, name);
}

}  // namespace vexa
