#include "backend/platform/font_entry.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace vexa {

namespace {

/// Styles of a family. Light, Black and the like make families of their own there.
constexpr std::array<std::string_view, 4> kStyles = {"Bold", "Italic", "Oblique", "Regular"};

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// A style, or the sizes of a font that has only some.
bool isNoPartOfFamily(std::string_view word) {
    const bool sizes = word.find_first_not_of("0123456789,") == std::string_view::npos;
    return (sizes && word.find(',') != std::string_view::npos) ||
           std::find(kStyles.begin(), kStyles.end(), word) != kStyles.end();
}

std::string_view familyOf(std::string_view name) {
    name = trimmed(name);
    std::size_t blank = name.rfind(' ');
    while (blank != std::string_view::npos && isNoPartOfFamily(name.substr(blank + 1))) {
        name = trimmed(name.substr(0, blank));
        blank = name.rfind(' ');
    }
    return name;
}

}  // namespace

std::vector<std::string> familiesOfFontEntry(std::string_view entry) {
    entry = trimmed(entry);
    const std::size_t kind = entry.rfind(" (");
    if (kind != std::string_view::npos && entry.back() == ')') entry = entry.substr(0, kind);
    constexpr std::string_view kAnd = " & ";
    std::vector<std::string> families;
    while (!entry.empty()) {
        const std::size_t end = std::min(entry.find(kAnd), entry.size());
        const std::string_view family = familyOf(entry.substr(0, end));
        if (!family.empty()) families.emplace_back(family);
        entry.remove_prefix(std::min(end + kAnd.size(), entry.size()));
    }
    return families;
}

}  // namespace vexa
