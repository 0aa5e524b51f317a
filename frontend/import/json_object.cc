#include "frontend/import/json_object.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "frontend/import/import_problem.h"

namespace vexa::frontend {

namespace {

constexpr std::size_t kLongestFound = 40;
constexpr std::string_view kIgnored = "x-";

/// How many letters must change to make one text of the other.
std::size_t distance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < to.size(); ++j) {
            const auto same = [](char a, char b) { return (a | 0x20) == (b | 0x20); };
            const std::size_t changed = diagonal + (same(from[i], to[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({row[j] + 1, row[j + 1] + 1, changed});
        }
    }
    return row.back();
}

}  // namespace

std::string foundText(const Json& value) {
    if (value.is_object()) return "{...}";
    if (value.is_array()) return "[...]";
    std::string text = value.dump(-1, ' ', false, Json::error_handler_t::replace);
    if (text.size() <= kLongestFound) return text;
    std::size_t end = kLongestFound;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) --end;
    return text.substr(0, end) + "...";
}

std::string_view nearestWord(std::string_view word, const std::vector<std::string_view>& known) {
    constexpr std::size_t kNearEnough = 3;
    if (word.size() > kLongestFound) return {};
    std::size_t least = std::min(kNearEnough, word.size());
    std::string_view nearest;
    for (const std::string_view each : known) {
        const std::size_t away = distance(word, each);
        if (away < least) {
            least = away;
            nearest = each;
        }
    }
    return nearest;
}

std::string unknownKey(std::string_view key, const std::vector<std::string_view>& known) {
    const std::string_view nearest = nearestWord(key, known);
    const std::string shown(key.substr(0, kLongestFound));
    if (!nearest.empty()) {
        return composed("There is no key '^1' here. Did you mean '^2'?"_text, {shown, std::string(nearest)});
    }
    std::string list;
    for (const std::string_view each : known) list += (list.empty() ? "" : ", ") + std::string(each);
    return composed("There is no key '^1' here. These are known: ^2."_text, {shown, list});
}

JsonObject::JsonObject(Json& value, const JsonPlace& place, JsonRefusal& refusal)
    : value_(value), place_(place), refusal_(refusal) {
    if (!value.is_object()) refusal.refuse(place, mismatch(foundText(value), "an object"_text));
}

Json* JsonObject::find(std::string_view key) {
    if (std::find(known_.begin(), known_.end(), key) == known_.end()) known_.push_back(key);
    if (!isFine()) return nullptr;
    const auto found = value_.find(key);
    return found == value_.end() ? nullptr : &*found;
}

void JsonObject::require(std::string_view key, std::string_view expected) {
    if (has(key) || !isFine()) return;
    refusal_.refuse(place_, composed("The key '^1' is missing. Expected: ^2."_text,
                                     {std::string(key), translated(expected)}));
}

void JsonObject::refuse(std::string_view key, std::string_view expected) {
    refusal_.refuse(place(key), mismatch(foundText(*value_.find(key)), expected));
}

void JsonObject::read(std::string_view key, std::string& value) {
    Json* const found = find(key);
    if (found == nullptr) return;
    if (!found->is_string()) return refuse(key, "a text"_text);
    value = std::move(found->get_ref<std::string&>());
}

void JsonObject::read(std::string_view key, bool& value) {
    std::optional<bool> read_value;
    read(key, read_value);
    value = read_value.value_or(value);
}

void JsonObject::read(std::string_view key, std::optional<bool>& value) {
    const Json* const found = find(key);
    if (found == nullptr) return;
    if (!found->is_boolean()) return refuse(key, "true or false"_text);
    value = found->get<bool>();
}

void JsonObject::readPositive(std::string_view key, std::optional<double>& value) {
    constexpr double kMost = 1e6;  // nothing is larger than this many points
    const Json* const found = find(key);
    if (found == nullptr) return;
    const double number = found->is_number() ? found->get<double>() : 0;
    if (!(number > 0 && number <= kMost)) return refuse(key, "a number above 0, at most a million"_text);
    value = number;
}

void JsonObject::readWhole(std::string_view key, WholeNumbers bounds, std::int64_t& value) {
    const Json* const found = find(key);
    if (found == nullptr) return;
    const double number = found->is_number() ? found->get<double>() : std::nan("");
    const bool fits = number >= static_cast<double>(bounds.least) &&
                      number <= static_cast<double>(bounds.most) && std::floor(number) == number;
    if (fits) {
        value = static_cast<std::int64_t>(number);
        return;
    }
    refusal_.refuse(place(key),
                    composed("Found: ^1. Expected: a whole number from ^2 to ^3."_text,
                             {foundText(*found), std::to_string(bounds.least), std::to_string(bounds.most)}));
}

Json* JsonObject::list(std::string_view key) {
    Json* const found = find(key);
    if (found == nullptr || found->is_array()) return found;
    refuse(key, "a list"_text);
    return nullptr;
}

bool JsonObject::finish() {
    if (!isFine()) return false;
    for (auto each = value_.begin(); each != value_.end(); ++each) {
        const std::string& key = each.key();
        if (key.starts_with(kIgnored) || std::find(known_.begin(), known_.end(), key) != known_.end())
            continue;
        return refusal_.refuse(place_, unknownKey(key, known_));
    }
    return true;
}

}  // namespace vexa::frontend
