#include "frontend/store/element_reader.h"

#include <cmath>

#include "frontend/looks/look_words.h"
#include "frontend/package/xml_escapes.h"

namespace vexa::frontend {

const char* ElementReader::find(const char* name) {
    const pugi::xml_attribute attribute = node_.attribute(name);
    if (!attribute) return nullptr;
    ++found_;
    return attribute.value();
}

ElementReader& ElementReader::text(const char* name, std::string& value) {
    if (const char* const found = find(name)) {
        value = found;
        ok_ = decodeBackslashes(value) && ok_;
    }
    return *this;
}

ElementReader& ElementReader::text(const char* name, std::optional<std::string>& value) {
    return node_.attribute(name) ? text(name, value.emplace()) : *this;
}

ElementReader& ElementReader::flag(const char* name, bool& value) {
    if (const char* const found = find(name)) {
        value = std::strcmp(found, "true") == 0;
        ok_ = ok_ && (value || std::strcmp(found, "false") == 0);
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
    if (const char* const found = find(name)) ok_ = readFinite(found, value) && ok_;
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
            ok_ = false;
            return *this;
        }
        at += goesOn ? 1 : 0;
    }
    return *this;
}

ElementReader& ElementReader::format(const char* name, tables::DisplayFormat& value) {
    if (const char* const found = find(name)) {
        const std::optional<tables::DisplayFormat> read = tables::parseFormat(found);
        ok_ = ok_ && read.has_value();
        value = read.value_or(tables::DisplayFormat());
    }
    return *this;
}

ElementReader& ElementReader::color(const char* name, std::optional<tables::Color>& value) {
    if (const char* const found = find(name)) {
        value = parseColor(found);
        ok_ = ok_ && value.has_value();
    }
    return *this;
}

ElementReader& ElementReader::content(std::string& value) {
    hasContent_ = true;
    value = node_.value();
    ok_ = decodeBackslashes(value) && !node_.first_child() && ok_;
    return *this;
}

ElementReader& ElementReader::plainContent(std::string_view& value) {
    hasContent_ = true;
    value = node_.value();
    ok_ = ok_ && !node_.first_child();
    return *this;
}

ElementReader& ElementReader::require(bool condition) {
    ok_ = ok_ && condition;
    return *this;
}

bool ElementReader::isRead() const {
    std::size_t attributes = 0;
    for (pugi::xml_attribute each = node_.first_attribute(); each; each = each.next_attribute()) ++attributes;
    return ok_ && attributes == found_ && (hasContent_ || *node_.value() == '\0');
}

}  // namespace vexa::frontend
