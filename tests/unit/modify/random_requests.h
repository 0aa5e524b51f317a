// Modifications as chance makes them, for properties that hold of all.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/document/outline.h"

namespace vexa::frontend {

/// The same seed and outline make the same requests. Labels and names are mostly those of the outline.
class RandomRequests {
  public:
    RandomRequests(std::uint32_t seed, const Outline& outline);

    /// A whole group. `deletes`: whether it may delete; `replaces`: whether it may change texts and numbers.
    [[nodiscard]] std::string group(bool deletes, bool replaces);
    /// Types and criteria: the attributes and first children of a group.
    [[nodiscard]] std::string selection();
    [[nodiscard]] std::string tableChange();
    [[nodiscard]] std::string cellsChange(bool replaces);

  private:
    [[nodiscard]] std::size_t below(std::size_t bound) {
        return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random_);
    }
    [[nodiscard]] bool chance(std::size_t oneIn) { return below(oneIn) == 0; }
    [[nodiscard]] std::string_view oneOf(const std::vector<std::string>& texts);
    [[nodiscard]] std::string attribute(std::string_view name, std::string_view value) const;
    [[nodiscard]] std::string criteria();
    [[nodiscard]] std::string objectChange();
    [[nodiscard]] std::string textChange();
    [[nodiscard]] std::string cellKinds();
    [[nodiscard]] std::string condition();
    [[nodiscard]] std::string color(std::string_view prefix);
    void note(const Item& item);

    std::mt19937 random_;
    std::vector<std::string> commands_{"No such command"};
    std::vector<std::string> subtypes_{"No such subtype"};
    std::vector<std::string> labels_{"No such label"};
    std::vector<std::string> categories_{"No such category"};
};

}  // namespace vexa::frontend
