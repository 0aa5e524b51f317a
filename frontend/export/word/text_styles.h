// How the texts of tables look, each different way once: what the styles of a text document are made of.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "backend/tables/model/table_look.h"

namespace vexa::frontend {

/// Word processors hold some thousands of styles; further texts have their looks themselves.
inline constexpr std::size_t mostTableStyles = 1'000;

struct WordTextStyle {
    std::string font;              ///< as word processors name it
    std::int64_t halfPoints = 18;  ///< the size
    bool bold = false;
    bool italic = false;
    bool underline = false;
    tables::Color color;
    tables::HorizontalAlign align = tables::HorizontalAlign::left;  ///< never `mixed`

    bool operator==(const WordTextStyle&) const = default;
};

/// The style of an area's texts; `isNumber` says which side `mixed` means.
[[nodiscard]] WordTextStyle textStyleOf(const tables::AreaLook& look, bool isNumber, double scale = 1);

/// The family as word processors name it, as far as they take names.
[[nodiscard]] std::string wordFont(std::string_view family);

class TextStyles {
  public:
    /// The number of the style, the same for equal ones, in the order in which they were asked for first.
    [[nodiscard]] std::size_t find(const WordTextStyle& style);
    [[nodiscard]] const std::vector<WordTextStyle>& all() const { return styles_; }

  private:
    std::unordered_map<std::string, std::size_t> numbers_;
    std::vector<WordTextStyle> styles_;
};

}  // namespace vexa::frontend
