// STYLE of cells and of texts.
#pragma once

#include <string>
#include <string_view>

#include "backend/syntax/command_spec.h"

namespace vexa {

inline constexpr std::string_view kStyles[] = {"REGULAR", "BOLD", "ITALIC", "UNDERLINE"};

/// A setting that is left alone unless it was given.
struct StyleSetting {
    bool given = false;
    bool on = false;

    void set(bool value) {
        given = true;
        on = value;
    }
};

struct FontStyle {
    StyleSetting bold, italic, underline;
};

/// Reads the keywords of `style` in the order written: REGULAR turns all three off, the others one on.
[[nodiscard]] FontStyle readFontStyle(const ParamObj& style);

/// Appends the attribute `name` when the setting was given.
void appendStyle(const StyleSetting& setting, std::string_view name, std::string& request);

}  // namespace vexa
