// Where a value stands in a JSON text, and what is wrong with it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vexa::frontend {

/// One step from a value to one that it holds: a key, or an index.
struct JsonStep {
    std::string key;
    std::size_t index = 0;
    bool isIndex = false;

    bool operator==(const JsonStep&) const = default;
};
using JsonPath = std::vector<JsonStep>;

/// "items[0].rows[1].label"; keys that are no words stand in quotes and brackets.
[[nodiscard]] std::string pathText(const JsonPath& path);

/// A value's place as a chain of the values around it, so that walking down costs nothing. Keys and the
/// places above must outlive it.
class JsonPlace {
  public:
    explicit JsonPlace(const JsonPath& base) : base_(&base) {}
    JsonPlace(const JsonPlace& above, std::string_view key) : above_(&above), key_(key) {}
    JsonPlace(const JsonPlace& above, std::size_t index) : above_(&above), index_(index), isIndex_(true) {}

    [[nodiscard]] JsonPath path() const;

  private:
    const JsonPath* base_ = nullptr;
    const JsonPlace* above_ = nullptr;
    std::string_view key_;
    std::size_t index_ = 0;
    bool isIndex_ = false;
};

/// The first thing that did not fit; what comes later does not count.
struct JsonRefusal {
    bool isThere = false;
    JsonPath path;
    std::string message;

    /// Always false, so that it can be returned.
    bool refuse(JsonPath where, std::string what);
    bool refuse(const JsonPlace& where, std::string what);
};

/// The offset of the value at `path` in a valid beginning of a JSON text: of its `occurrence`-th one, from 1,
/// for a key that stands there twice. The end of what can be read, when it is not there.
[[nodiscard]] std::size_t offsetOf(std::string_view text, const JsonPath& path, std::size_t occurrence = 1);

}  // namespace vexa::frontend
