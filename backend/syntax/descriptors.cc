#include "backend/syntax/descriptors.h"

#include <algorithm>

#include "backend/platform/character_set.h"

namespace vexa {

namespace {

template <typename Descriptor>
const Descriptor* findByName(const std::vector<Descriptor>& descriptors, std::string_view name) {
    const auto found = std::find_if(descriptors.begin(), descriptors.end(), [name](const Descriptor& each) {
        return equalsIgnoringCase(each.name(), name);
    });
    return found == descriptors.end() ? nullptr : &*found;
}

/// Adds `added`, or puts it in the place of the one that has its name.
template <typename Descriptor>
void addOrReplace(std::vector<Descriptor>& descriptors, const Descriptor& added) {
    const auto same = std::find_if(descriptors.begin(), descriptors.end(),
                                   [&added](const Descriptor& each) { return each.name() == added.name(); });
    if (same == descriptors.end()) {
        descriptors.push_back(added);
    } else {
        *same = added;
    }
}

}  // namespace

ParamDescriptor::ParamDescriptor(std::string_view name, UPSpecTypes::ParamSpec spec, bool required,
                                 bool valueRequired, UPSpecTypes::BracketOptions brackets)
    : name_(name), spec_(spec), brackets_(brackets), required_(required), valueRequired_(valueRequired) {}

ParamDescriptor& ParamDescriptor::addStringValue(std::string_view value) {
    stringValues_.push_back(value);
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

ParamDescriptor& ParamDescriptor::addQualifDesc(const ParamDescriptor& qualifier) {
    addOrReplace(qualifiers_, qualifier);
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

ParamDescriptor& ParamDescriptor::setValueLabel(std::string_view label) {
    valueLabel_ = label;
    return *this;
}

bool ParamDescriptor::hasStringValue(std::string_view value) const {
    return std::any_of(stringValues_.begin(), stringValues_.end(),
                       [value](std::string_view each) { return equalsIgnoringCase(each, value); });
}

const ParamDescriptor* ParamDescriptor::findQualifier(std::string_view name) const {
    return findByName(qualifiers_, name);
}

SubComDescriptor::SubComDescriptor(std::string_view name, UPSpecTypes::SubComSpec spec, bool required,
                                   bool repeatable)
    : name_(name), spec_(spec), required_(required), repeatable_(repeatable) {}

SubComDescriptor& SubComDescriptor::addParamDesc(const ParamDescriptor& parameter) {
    addOrReplace(parameters_, parameter);
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

GroupComDescriptor& GroupComDescriptor::addSubComDesc(const SubComDescriptor& subcommand, bool leading) {
    addOrReplace(subcommands_, subcommand);
    if (leading) {
        leadingName_ = subcommand.name();
    }
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

CommandDescriptor& CommandDescriptor::addSubComDesc(const SubComDescriptor& subcommand) {
    addOrReplace(subcommands_, subcommand);
    return *this;
}

CommandDescriptor& CommandDescriptor::addGroupComDesc(const GroupComDescriptor& group) {
    groups_.push_back(group);
    return *this;
}

const SubComDescriptor* CommandDescriptor::findSubcommand(std::string_view name) const {
    return findByName(subcommands_, name);
}

}  // namespace vexa
