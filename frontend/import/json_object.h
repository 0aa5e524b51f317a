// Reads the keys of one JSON object strictly: what has the wrong type, and a key that nobody asked for, is
// refused.
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/import/json_place.h"

namespace vexa::frontend {

using Json = nlohmann::json;

/// A scalar as JSON writes it, shortened; "{...}" or "[...]" of an object or a list.
[[nodiscard]] std::string foundText(const Json& value);

/// Bounds of a whole number.
struct WholeNumbers {
    std::int64_t least = 0;
    std::int64_t most = INT32_MAX;
};

/// The first of several reads that fails is what the refusal says; the reads after it do nothing.
/// Each read leaves `value` alone when the key is not there.
class JsonObject {
  public:
    /// `value` must be an object, or is refused; it may lose long texts to the one who reads. All three
    /// outlive this.
    JsonObject(Json& value, const JsonPlace& place, JsonRefusal& refusal);

    /// The value of a key, or null. Keys that were asked for are known.
    [[nodiscard]] Json* find(std::string_view key);
    [[nodiscard]] bool has(std::string_view key) { return find(key) != nullptr; }
    void read(std::string_view key, std::string& value);
    void read(std::string_view key, bool& value);
    void read(std::string_view key, std::optional<bool>& value);
    /// A finite number above 0.
    void readPositive(std::string_view key, std::optional<double>& value);
    void readWhole(std::string_view key, WholeNumbers bounds, std::int64_t& value);
    /// The list at a key, whose elements `action(Json&, const JsonPlace&)` reads; it answers false to stop.
    template <typename Action>
    void forEach(std::string_view key, const Action& action);

    /// Refuses an object that lacks a key.
    void require(std::string_view key, std::string_view expected);
    /// Refuses with what the value of a key should have been.
    void refuse(std::string_view key, std::string_view expected);
    /// Refuses keys that nobody asked for, but those that begin with "x-". True when nothing was refused.
    bool finish();

    [[nodiscard]] JsonPlace place(std::string_view key) const { return JsonPlace(place_, key); }
    [[nodiscard]] const JsonPlace& place() const { return place_; }
    [[nodiscard]] JsonRefusal& refusal() const { return refusal_; }
    /// Nothing was refused so far.
    [[nodiscard]] bool isFine() const { return !refusal_.isThere; }

  private:
    [[nodiscard]] Json* list(std::string_view key);

    Json& value_;
    const JsonPlace& place_;
    JsonRefusal& refusal_;
    std::vector<std::string_view> known_;
};

/// The one of `known` that differs from `word` by a letter or two; empty where none does.
[[nodiscard]] std::string_view nearestWord(std::string_view word, const std::vector<std::string_view>& known);
/// The complaint about a key that is not one of `known`.
[[nodiscard]] std::string unknownKey(std::string_view key, const std::vector<std::string_view>& known);

template <typename Action>
void JsonObject::forEach(std::string_view key, const Action& action) {
    Json* const elements = list(key);
    if (elements == nullptr) return;
    const JsonPlace above(place_, key);
    for (std::size_t i = 0; i < elements->size(); ++i) {
        if (!action((*elements)[i], JsonPlace(above, i)) || refusal_.isThere) return;
    }
}

}  // namespace vexa::frontend
