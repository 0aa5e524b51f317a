#include "apps/rendering/safe_text.h"

#include <algorithm>

#include "backend/text/text_width.h"

namespace vexa::rendering {

std::string safeText(std::string_view text) {
    std::string safe;
    while (true) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        if (end != std::string_view::npos && line.ends_with('\r')) line.remove_suffix(1);
        safe += printableText(line);
        if (end == std::string_view::npos) return safe;
        safe += '\n';
        text.remove_prefix(end + 1);
    }
}

std::size_t naturalWidth(std::string_view text) {
    std::size_t width = 0;
    while (true) {
        const std::size_t end = text.find('\n');
        width = std::max(width, displayWidth(text.substr(0, end)));
        if (end == std::string_view::npos) return width;
        text.remove_prefix(end + 1);
    }
}

}  // namespace vexa::rendering
