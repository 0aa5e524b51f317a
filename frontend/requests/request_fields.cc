#include "frontend/requests/request_fields.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "backend/strings/dictionary.h"
#include "backend/text/character_set.h"
#include "backend/text/utf8.h"
#include "frontend/requests/entities.h"

namespace vexa::frontend {

namespace {

constexpr std::int32_t kGreatest = std::numeric_limits<std::int32_t>::max();

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// A whole text as a finite number, in a form that does not hang on the locale.
std::optional<double> numberOf(std::string_view text) {
    double number = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool whole = error == std::errc() && end == text.data() + text.size() && std::isfinite(number);
    return whole ? std::optional(number) : std::nullopt;
}

constexpr RequestWord<Comparison> kComparisons[] = {
    {">=", Comparison::greaterOrEqual}, {"<=", Comparison::lessOrEqual}, {"<>", Comparison::notEqual},
    {">", Comparison::greater},         {"<", Comparison::less},         {"=", Comparison::equal}};

/// A comparison and the number behind it.
std::optional<CellCondition> comparisonOf(std::string_view text) {
    text = trimmed(text);
    const auto* const found = std::find_if(std::begin(kComparisons), std::end(kComparisons),
                                           [text](const auto& each) { return text.starts_with(each.word); });
    if (found == std::end(kComparisons)) {
        return std::nullopt;
    }
    text = trimmed(text.substr(found->word.size()));
    const std::optional<double> number = numberOf(text.starts_with("+") ? text.substr(1) : text);
    if (!number || text.starts_with("+-")) {
        return std::nullopt;
    }
    return CellCondition{CellCondition::Kind::comparison, 0, found->value, *number};
}

}  // namespace

const ScannedAttribute* RequestFields::find(std::string_view name) const {
    const auto found = std::find_if(tag_.attributes.begin(), tag_.attributes.end(),
                                    [name](const ScannedAttribute& each) { return each.form->name == name; });
    return found == tag_.attributes.end() ? nullptr : &*found;
}

void RequestFields::refuse(const ScannedAttribute& attribute, const std::string& fits) {
    scanner_.refuse(attribute.value, tag_.form->name, attribute.form->name, fits);
}

void RequestFields::requireOne(std::initializer_list<std::string_view> names) {
    if (std::none_of(names.begin(), names.end(), [this](std::string_view name) { return has(name); })) {
        scanner_.refuseHere(tag_.form->name, listOf(names));
    }
    allowOne(names);
}

void RequestFields::allowOne(std::initializer_list<std::string_view> names) {
    const ScannedAttribute* first = nullptr;
    for (const std::string_view name : names) {
        const ScannedAttribute* const found = find(name);
        if (first != nullptr && found != nullptr) {
            refuse(*found, listOf({first->form->name}));
        }
        first = found != nullptr ? found : first;
    }
}

void RequestFields::text(std::string_view name, std::string& target) {
    const ScannedAttribute* const found = find(name);
    if (found == nullptr) {
        return;
    }
    const ValueForm form = found->form->value;
    std::string valid = form == ValueForm::foreign ? toUtf8(found->value) : validUtf8(found->value);
    if (form == ValueForm::raw) {
        target = std::move(valid);
    } else if (auto plain = withoutEntities(valid)) {
        target = std::move(*plain);
    } else {
        refuse(*found, listOf({"&quot;", "&amp;", "&apos;", "&lt;", "&gt;"}));
    }
}

void RequestFields::text(std::string_view name, std::optional<std::string>& target) {
    if (has(name)) {
        text(name, target.emplace());
    }
}

void RequestFields::truth(std::string_view name, bool& target) {
    constexpr RequestWord<bool> kTrue[] = {{"true", true}};
    choice(name, kTrue, target);
}

void RequestFields::flag(std::string_view name, std::optional<bool>& target) {
    constexpr RequestWord<bool> kFlags[] = {{"true", true}, {"false", false}};
    choice(name, kFlags, target);
}

std::optional<std::int32_t> RequestFields::wholeOf(const ScannedAttribute& attribute, std::string_view text,
                                                   std::int32_t least, std::int32_t greatest) {
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc() && end == text.data() + text.size() && number >= least && number <= greatest) {
        return number;
    }
    refuse(attribute,
           composed("a whole number from ^1 to ^2"_text, {std::to_string(least), std::to_string(greatest)}));
    return std::nullopt;
}

void RequestFields::whole(std::string_view name, std::int32_t least, std::int32_t& target) {
    std::optional<std::int32_t> given;
    whole(name, least, given);
    target = given.value_or(target);
}

void RequestFields::whole(std::string_view name, std::int32_t least, std::optional<std::int32_t>& target) {
    if (const ScannedAttribute* const found = find(name)) {
        target = wholeOf(*found, found->value, least, kGreatest);
    }
}

void RequestFields::size(std::string_view name, std::optional<double>& target) {
    if (const ScannedAttribute* const found = find(name)) {
        target = numberOf(found->value);
        if (!target || *target <= 0.0) {
            refuse(*found, translated("a number above 0"_text));
        }
    }
}

void RequestFields::number(std::string_view name, double& target) {
    if (const ScannedAttribute* const found = find(name)) {
        const std::optional<double> given = numberOf(found->value);
        if (!given) {
            refuse(*found, translated("a number"_text));
        }
        target = given.value_or(target);
    }
}

void RequestFields::positions(std::string_view name, std::vector<std::int32_t>& target) {
    const ScannedAttribute* const found = find(name);
    for (std::string_view rest = found != nullptr ? found->value : std::string_view();
         found != nullptr && !scanner_.refusal();) {
        const std::size_t end = rest.find(';');
        if (const auto position = wholeOf(*found, rest.substr(0, end), 1, kGreatest)) {
            target.push_back(*position);
        }
        if (end == std::string_view::npos) {
            return;
        }
        rest.remove_prefix(end + 1);
    }
}

void RequestFields::color(std::string_view red, std::string_view green, std::string_view blue,
                          std::optional<RequestedColor>& target) {
    if (!has(red) && !has(green) && !has(blue)) {
        return;
    }
    constexpr std::int32_t kBrightest = 255;
    target.emplace();
    std::uint8_t* const parts[] = {&target->red, &target->green, &target->blue};
    std::uint8_t* const* part = std::begin(parts);
    for (const std::string_view name : {red, green, blue}) {
        requireOne({name});
        if (const ScannedAttribute* const found = find(name)) {
            **part = static_cast<std::uint8_t>(wholeOf(*found, found->value, 0, kBrightest).value_or(0));
        }
        ++part;
    }
}

void RequestFields::condition(std::string_view name, CellCondition& target) {
    using Kind = CellCondition::Kind;
    const ScannedAttribute* const found = find(name);
    if (found == nullptr) {
        return;
    }
    std::string text;
    this->text(name, text);
    if (text == "all" || text == "missing") {
        target.kind = text == "all" ? Kind::all : Kind::missing;
        return;
    }
    for (const auto& [word, kind] : {RequestWord<Kind>{"top(", Kind::top}, {"bottom(", Kind::bottom}}) {
        if (text.starts_with(word) && text.ends_with(')')) {
            target.kind = kind;
            const std::string_view digits = found->value.substr(word.size());
            target.count = wholeOf(*found, digits.substr(0, digits.size() - 1), 1, kGreatest).value_or(1);
            return;
        }
    }
    if (const auto comparison = comparisonOf(text)) {
        target = *comparison;
        return;
    }
    refuse(*found,
           listOf({"all", "missing", "top(1)", "bottom(1)", "> 1", ">= 1", "< 1", "<= 1", "= 1", "<> 1"}));
}

}  // namespace vexa::frontend
