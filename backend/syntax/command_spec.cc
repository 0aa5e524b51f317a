#include "backend/syntax/command_spec.h"

#include <algorithm>
#include <cassert>
#include <iterator>

#include "backend/text/character_set.h"
#include "backend/tokens/token_sequence.h"

namespace vexa {

TokenItems withoutSeparators(std::span<const TokenInfoObj> tokens) {
    const auto isSeparator = [](const TokenInfoObj& token) {
        return token.getOperatorCode() == TokenSequenceBase::separator;
    };
    if (std::none_of(tokens.begin(), tokens.end(), isSeparator)) {
        return {tokens, nullptr};
    }
    auto items = std::make_shared<std::vector<TokenInfoObj>>();
    std::remove_copy_if(tokens.begin(), tokens.end(), std::back_inserter(*items), isSeparator);
    return {*items, items};
}

ParamObj::ParamObj(std::string_view name, const TokenInfoObj* keyword, std::span<const TokenInfoObj> value)
    : name_(name), keyword_(keyword), value_(value) {}

std::string_view ParamObj::getStringToken() const {
    return value_.size() == 1 && !value_[0].isNumber() ? value_[0].getString() : std::string_view();
}

std::string ParamObj::getUpStringToken() const { return toUpperCase(getStringToken()); }

bool ParamObj::getStringGeneric(std::string_view& text) const {
    if (value_.size() != 1 || value_[0].isOperator()) {
        return false;
    }
    text = value_[0].getString();
    return true;
}

bool ParamObj::getStringOrLiteral(std::string_view& text, bool& isLiteral) const {
    if (value_.size() != 1 || value_[0].isNumber() || value_[0].isOperator()) {
        return false;
    }
    text = value_[0].getString();
    isLiteral = value_[0].isLiteral();
    return true;
}

bool ParamObj::isOperatorValue(int operatorCode) const {
    return value_.size() == 1 && value_[0].isOperator() && value_[0].getOperatorCode() == operatorCode;
}

bool ParamObj::isStringValue(std::string_view text) const {
    return value_.size() == 1 && !value_[0].isNumber() && equalsIgnoringCase(value_[0].getString(), text);
}

std::optional<std::int32_t> ParamObj::getIntegerValue() const {
    return value_.size() == 1 ? value_[0].getIntegerValue() : std::nullopt;
}

std::optional<double> ParamObj::getDoubleValue() const {
    return value_.size() == 1 ? value_[0].getDoubleValue() : std::nullopt;
}

bool ParamObj::getStringList(std::vector<std::string_view>& texts) const {
    texts.clear();
    for (const TokenInfoObj& token : value_) {
        if (token.getOperatorCode() == TokenSequenceBase::separator) {
            continue;
        }
        if (!token.isLiteral() && !token.isWordLike()) {
            return false;
        }
        texts.push_back(token.getString());
    }
    return true;
}

bool ParamObj::getNumberList(std::vector<double>& numbers) const {
    numbers.clear();
    for (const TokenInfoObj& token : value_) {
        if (token.getOperatorCode() == TokenSequenceBase::separator) {
            continue;
        }
        const std::optional<double> number = token.getDoubleValue();
        if (!number) {
            return false;
        }
        numbers.push_back(*number);
    }
    return true;
}

void ParamObj::getLiterals(std::vector<std::string_view>& literals) const {
    literals.clear();
    for (const TokenInfoObj& token : value_) {
        if (token.isLiteral()) {
            literals.push_back(token.getString());
        }
    }
}

const TokenInfoObj& ParamObj::getTokenObj(std::size_t index) const {
    assert(index < value_.size());
    return value_[index];
}

std::string ParamObj::joinedTokens() const {
    std::string joined;
    for (const TokenInfoObj& token : value_) {
        if (&token != &value_.front()) {
            joined += ' ';
        }
        joined += token.getString();
    }
    return joined;
}

const ParamObj* SubComObj::getParamObj(std::string_view name) const {
    const auto found = std::find_if(parameters_.begin(), parameters_.end(),
                                    [name](const ParamObj& each) { return each.name() == name; });
    return found == parameters_.end() ? nullptr : &*found;
}

const SubComObj* SubComList::getSubComObj(std::string_view name) const {
    const auto found = std::find_if(subcommands_.begin(), subcommands_.end(),
                                    [name](const SubComObj& each) { return each.name() == name; });
    return found == subcommands_.end() ? nullptr : &*found;
}

void SubComList::getSubComObj(std::vector<const SubComObj*>& list, std::string_view name) const {
    list.clear();
    for (const SubComObj& each : subcommands_) {
        if (each.name() == name) {
            list.push_back(&each);
        }
    }
}

void CommandSpec::getGroupComObj(std::vector<const GroupComObj*>& list, std::string_view leading) const {
    list.clear();
    for (const GroupComObj& group : groups_) {
        if (group.hasSubCom(leading)) {
            list.push_back(&group);
        }
    }
}

bool AreStringsEqualCase(std::string_view left, std::string_view right) {
    return equalsIgnoringCase(left, right);
}

}  // namespace vexa
