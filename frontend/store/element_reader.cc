#include "frontend/store/element_reader.h"

#include <algorithm>
#include <cmath>

#include "frontend/looks/look_words.h"
#include "frontend/package/xml_escapes.h"
#include "frontend/store/objection.h"

namespace vexa::frontend {

namespace {

constexpr SystemText flagExpected = "true or false"_text;
constexpr SystemText numberExpected = "a number"_text;
constexpr SystemText wholeExpected = "a whole number"_text;
constexpr SystemText escapesExpected = "two capital hexadecimal digits behind each backslash"_text;

}  // namespace

const char* ElementReader::find(const char* name) {
    const pugi::xml_attribute attribute = node_.attribute(name);
    if (!attribute) return nullptr;
    if (found_ < names_.size()) names_[found_] = name;
    ++found_;
    return attribute.value();
}

void ElementReader::check(bool fits, const char* name, std::string_view expected) {
    if (fits) return;
    if (ok_) object(node_.name(), name, node_.attribute(name).value(), expected);
    ok_ = false;
}

void ElementReader::checkWhole(bool fits, const char* name) { check(fits, name, wholeExpected); }

void ElementReader::checkWord(bool fits, const char* name, const std::string_view* words, std::size_t count) {
    if (fits) return;
    std::string list;
    for (std::size_t i = 0; i < count; ++i) list.append(i == 0 ? "" : " | ").append(words[i]);
    check(false, name, list);
}

ElementReader& ElementReader::text(const char* name, std::string& value) {
    if (const char* const found = find(name)) {
        value = found;
        check(decodeBackslashes(value), name, escapesExpected);
    }
    return *this;
}

ElementReader& ElementReader::text(const char* name, std::optional<std::string>& value) {
    return node_.attribute(name) ? text(name, value.emplace()) : *this;
}

ElementReader& ElementReader::flag(const char* name, bool& value) {
    if (const char* const found = find(name)) {
        value = std::strcmp(found, "true") == 0;
        check(value || std::strcmp(found, "false") == 0, name, flagExpected);
    }
    return *this;
}

ElementReader& ElementReader::flag(const char* name, std::optional<bool>& value) {
    return node_.attribute(name) ? flag(name, value.emplace()) : *this;
}

bool ElementReader::readFinite(const char* text, double& value) {
    const char* const end = text + std::strlen(text);
    const auto result = std::from_chars(text, end, value);
    return result.ec == std::errc() && result.ptr == end && std::isfinite(value);
}

ElementReader& ElementReader::number(const char* name, double& value) {
    if (const char* const found = find(name)) check(readFinite(found, value), name, numberExpected);
    return *this;
}

ElementReader& ElementReader::number(const char* name, std::optional<double>& value) {
    return node_.attribute(name) ? number(name, value.emplace()) : *this;
}

ElementReader& ElementReader::list(const char* name, std::vector<std::uint32_t>& values) {
    const char* at = find(name);
    if (at == nullptr) return *this;
    const char* const end = at + std::strlen(at);
    values.clear();
    while (at != end) {
        const auto result = std::from_chars(at, end, values.emplace_back());
        at = result.ptr;
        const bool goesOn = at != end && *at == ' ' && at + 1 != end;
        if (result.ec != std::errc() || (at != end && !goesOn)) {
            check(false, name, "whole numbers with a blank between them"_text);
            return *this;
        }
        at += goesOn ? 1 : 0;
    }
    return *this;
}

ElementReader& ElementReader::format(const char* name, tables::DisplayFormat& value) {
    if (const char* const found = find(name)) {
        const std::optional<tables::DisplayFormat> read = tables::parseFormat(found);
        check(read.has_value(), name, "a display format such as F8.2"_text);
        value = read.value_or(tables::DisplayFormat());
    }
    return *this;
}

ElementReader& ElementReader::color(const char* name, std::optional<tables::Color>& value) {
    if (const char* const found = find(name)) {
        value = parseColor(found);
        check(value.has_value(), name, "a color such as #00ff00"_text);
    }
    return *this;
}

ElementReader& ElementReader::content(std::string& value) {
    hasContent_ = true;
    value = node_.value();
    check(decodeBackslashes(value) && !node_.first_child(), "", escapesExpected);
    return *this;
}

ElementReader& ElementReader::plainContent(std::string_view& value) {
    hasContent_ = true;
    value = node_.value();
    ok_ = ok_ && !node_.first_child();
    return *this;
}

ElementReader& ElementReader::require(bool condition) {
    check(condition, "", "what this element may say here"_text);
    return *this;
}

ElementReader& ElementReader::require(bool condition, const char* name, std::string_view expected) {
    check(condition, name, expected);
    return *this;
}

bool ElementReader::isKnown(const char* name) const {
    const auto end = names_.begin() + static_cast<std::ptrdiff_t>(std::min(found_, names_.size()));
    return std::any_of(names_.begin(), end,
                       [name](const char* known) { return std::strcmp(known, name) == 0; });
}

bool ElementReader::isRead() const {
    std::size_t attributes = 0;
    for (pugi::xml_attribute each = node_.first_attribute(); each; each = each.next_attribute()) ++attributes;
    const bool isWhole = attributes == found_ && (hasContent_ || *node_.value() == '\0');
    if (ok_ && !isWhole) objectToRest();
    return ok_ && isWhole;
}

void ElementReader::objectToRest() const {
    for (pugi::xml_attribute each = node_.first_attribute(); each; each = each.next_attribute()) {
        if (!isKnown(each.name())) {
            object(node_.name(), each.name(), each.value(), "no attribute of that name"_text);
            return;
        }
    }
    object(node_.name(), "", "", "no text in this element"_text);
}

}  // namespace vexa::frontend
