#include "frontend/import/json_values.h"

#include <algorithm>

#include "backend/strings/dictionary.h"
#include "frontend/import/import_problem.h"
#include "frontend/looks/look_words.h"

namespace vexa::frontend {

namespace {

void readColorAt(JsonObject& object, std::string_view key, std::optional<tables::Color>& color) {
    const Json* const found = object.find(key);
    if (found == nullptr) return;
    color = found->is_string() ? parseColor(found->get_ref<const std::string&>()) : std::nullopt;
    if (!color) object.refuse(key, "a color such as #ff8800"_text);
}

}  // namespace

void readStyle(JsonObject& object, tables::CellStyle& style) {
    object.read("bold", style.bold);
    object.read("italic", style.italic);
    object.read("underline", style.underline);
    object.read("font", style.font);
    object.readPositive("size", style.size);
    readColorAt(object, "color", style.color);
    readColorAt(object, "background", style.background);
}

void readStyleAt(JsonObject& object, std::string_view key, tables::CellStyle& style) {
    Json* const found = object.find(key);
    if (found == nullptr) return;
    const JsonPlace place = object.place(key);
    JsonObject inner(*found, place, object.refusal());
    readStyle(inner, style);
    inner.finish();
}

void readFormat(JsonObject& object, std::string_view key, tables::DisplayFormat& format) {
    const Json* const found = object.find(key);
    if (found == nullptr) return;
    const std::optional<tables::DisplayFormat> read =
        found->is_string() ? tables::parseFormat(found->get_ref<const std::string&>()) : std::nullopt;
    if (!read) return object.refuse(key, "a format such as F8.2, PCT5.1 or DATE"_text);
    format = *read;
}

void readWord(JsonObject& object, std::string_view key, const std::vector<std::string_view>& words,
              std::optional<std::size_t>& value) {
    const Json* const found = object.find(key);
    if (found == nullptr) return;
    const auto which = found->is_string()
                           ? std::find(words.begin(), words.end(), found->get_ref<const std::string&>())
                           : words.end();
    if (which != words.end()) {
        value = static_cast<std::size_t>(which - words.begin());
        return;
    }
    std::string list;
    for (const std::string_view word : words) list += (list.empty() ? "" : ", ") + std::string(word);
    const JsonPlace place = object.place(key);
    object.refusal().refuse(place,
                            composed("Found: ^1. Expected one of: ^2."_text, {foundText(*found), list}));
}

}  // namespace vexa::frontend
