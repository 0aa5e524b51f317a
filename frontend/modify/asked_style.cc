#include <string>

#include "backend/platform/fonts.h"
#include "frontend/document/compared_text.h"
#include "frontend/modify/cell_change.h"

namespace vexa::frontend {

namespace {

/// The font as the system writes it, or as it was asked for where it is not installed.
std::string fontAskedFor(const std::string& font, Complaints& complaints) {
    if (!isFontInstalled(font)) {
        complaints.invalidFont(font);
        return font;
    }
    std::string wanted = comparedText(font);
    for (const std::string& each : installedFonts()) {
        if (comparedText(each) == wanted) return each;
    }
    // One that every system has, by its general name.
    return wanted;
}

std::optional<tables::Color> colorOf(const std::optional<RequestedColor>& color) {
    if (!color) return std::nullopt;
    return tables::Color{static_cast<std::uint32_t>(color->red) << 16 |
                         static_cast<std::uint32_t>(color->green) << 8 | color->blue};
}

}  // namespace

tables::CellStyle styleAskedFor(const CellsChange& change, Complaints& complaints) {
    tables::CellStyle style;
    style.bold = change.bold;
    style.italic = change.italic;
    style.underline = change.underline;
    style.size = change.fontSize;
    style.color = colorOf(change.textColor);
    style.background = colorOf(change.backgroundColor);
    if (!change.font.empty()) style.font = fontAskedFor(change.font, complaints);
    return style;
}

tables::CellStyle styleAskedFor(const TextChange& change, Complaints& complaints) {
    tables::CellStyle style;
    style.bold = change.bold;
    style.italic = change.italic;
    style.underline = change.underline;
    style.size = change.fontSize;
    style.color = colorOf(change.color);
    if (!change.font.empty()) style.font = fontAskedFor(change.font, complaints);
    return style;
}

}  // namespace vexa::frontend
