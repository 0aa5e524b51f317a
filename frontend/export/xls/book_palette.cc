#include "frontend/export/xls/book_palette.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

#include "frontend/export/xls/records.h"

namespace vexa::frontend::biff {

namespace {

constexpr std::array<std::uint32_t, BookPalette::size> usualColors{
    0x000000, 0xFFFFFF, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00, 0xFF00FF, 0x00FFFF, 0x800000, 0x008000,
    0x000080, 0x808000, 0x800080, 0x008080, 0xC0C0C0, 0x808080, 0x9999FF, 0x993366, 0xFFFFCC, 0xCCFFFF,
    0x660066, 0xFF8080, 0x0066CC, 0xCCCCFF, 0x000080, 0xFF00FF, 0xFFFF00, 0x00FFFF, 0x800080, 0x800000,
    0x008080, 0x0000FF, 0x00CCFF, 0xCCFFFF, 0xCCFFCC, 0xFFFF99, 0x99CCFF, 0xFF99CC, 0xCC99FF, 0xFFCC99,
    0x3366FF, 0x33CCCC, 0x99CC00, 0xFFCC00, 0xFF9900, 0xFF6600, 0x666699, 0x969696, 0x003366, 0x339966,
    0x003300, 0x333300, 0x993300, 0x993366, 0x333399, 0x333333};

int part(std::uint32_t rgb, unsigned shift) { return static_cast<int>(rgb >> shift & 0xFFU); }

/// How much two colours differ to the eye: red and blue count by how red both are.
int distance(std::uint32_t left, std::uint32_t right) {
    const int red = part(left, 16) - part(right, 16);
    const int green = part(left, 8) - part(right, 8);
    const int blue = part(left, 0) - part(right, 0);
    const int redness = (part(left, 16) + part(right, 16)) / 2;
    return (512 + redness) * red * red / 256 + 4 * green * green + (767 - redness) * blue * blue / 256;
}

}  // namespace

BookPalette::BookPalette() : colors_(usualColors) {}

void BookPalette::read(std::string_view content) {
    const std::size_t count = std::min<std::size_t>(twoAt(content, 0), size);
    for (std::size_t i = 0; i < count && 2 + 4 * i + 4 <= content.size(); ++i) {
        const std::uint32_t stored = fourAt(content, 2 + 4 * i);  // red first
        colors_[i] = (stored & 0xFFU) << 16U | (stored & 0xFF00U) | (stored >> 16U & 0xFFU);
    }
}

void BookPalette::take(const std::map<std::uint32_t, std::size_t>& uses) {
    std::vector<std::pair<std::size_t, std::uint32_t>> missing;
    std::array<bool, size> inUse{};
    for (const auto& [rgb, count] : uses) {
        const auto place = std::find(colors_.begin(), colors_.end(), rgb);
        if (place == colors_.end()) {
            missing.emplace_back(count, rgb);
        } else {
            inUse[static_cast<std::size_t>(place - colors_.begin())] = true;
        }
    }
    // The ones used most first; equal ones by colour.
    std::sort(missing.begin(), missing.end(), [](const auto& a, const auto& b) {
        return a.first != b.first ? a.first > b.first : a.second < b.second;
    });
    auto next = missing.begin();
    for (std::size_t i = size; i-- > 0 && next != missing.end();) {
        if (!inUse[i]) colors_[i] = (next++)->second;
    }
}

std::uint16_t BookPalette::nearest(tables::Color color) const {
    std::size_t best = 0;
    int least = std::numeric_limits<int>::max();
    for (std::size_t i = 0; i < size; ++i) {
        const int differs = distance(color.rgb, colors_[i]);
        if (differs < least) {
            least = differs;
            best = i;
        }
    }
    return static_cast<std::uint16_t>(first + best);
}

tables::Color BookPalette::color(std::uint16_t number) const { return {colors_[number - first]}; }

bool BookPalette::changed() const { return colors_ != usualColors; }

void BookPalette::append(std::string& out) const {
    Records records(out);
    records.begin(id::palette).two(size);
    for (const std::uint32_t rgb : colors_) {
        records.one(rgb >> 16U & 0xFFU).one(rgb >> 8U & 0xFFU).one(rgb & 0xFFU).one(0);
    }
    records.end();
}

}  // namespace vexa::frontend::biff
