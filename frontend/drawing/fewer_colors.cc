#include "frontend/drawing/fewer_colors.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vexa::frontend {

namespace {

constexpr std::array<unsigned int, 3> channels{24, 16, 8};  // where red, green and blue stand in a pixel

std::uint64_t valueOf(std::uint32_t color, unsigned int channel) { return color >> channel & 0xFFU; }

struct Shade {
    std::uint32_t color;
    std::uint64_t count;
    std::uint32_t substitute = 0;
};
using Shades = std::vector<Shade>;

/// Some shades that one colour may stand for.
struct Group {
    Shades::iterator begin;
    Shades::iterator end;
    double error = 0;          ///< what that would cost
    unsigned int channel = 0;  ///< in which they differ most
    std::uint64_t mean = 0;    ///< of that channel, rounded down
};

void measure(Group& group) {
    double greatest = -1;
    group.error = 0;
    for (const unsigned int channel : channels) {
        std::uint64_t count = 0;
        std::uint64_t sum = 0;
        std::uint64_t squares = 0;
        for (auto each = group.begin; each != group.end; ++each) {
            const std::uint64_t value = valueOf(each->color, channel);
            count += each->count;
            sum += each->count * value;
            squares += each->count * value * value;
        }
        const double mean = static_cast<double>(sum) / static_cast<double>(count);
        const double error = std::max(0.0, static_cast<double>(squares) - mean * static_cast<double>(sum));
        group.error += error;
        if (error <= greatest) continue;
        greatest = error;
        group.channel = channel;
        group.mean = sum / count;
    }
}

/// The shades above the mean leave the group.
Group split(Group& group) {
    const auto middle = std::stable_partition(group.begin, group.end, [&group](const Shade& each) {
        return valueOf(each.color, group.channel) <= group.mean;
    });
    Group above{middle, group.end};
    group.end = middle;
    measure(group);
    measure(above);
    return above;
}

/// The most frequent shade where it is half of all; so a white ground is white. Else the mean.
std::uint32_t colorFor(const Group& group) {
    std::uint64_t count = 0;
    std::array<std::uint64_t, 3> sums{};
    for (auto each = group.begin; each != group.end; ++each) {
        count += each->count;
        for (std::size_t i = 0; i < channels.size(); ++i)
            sums[i] += each->count * valueOf(each->color, channels[i]);
    }
    const auto most = std::max_element(group.begin, group.end, [](const Shade& left, const Shade& right) {
        return std::pair(left.count, right.color) < std::pair(right.count, left.color);
    });
    if (most->count * 2 >= count) return most->color;
    std::uint32_t color = 0xFF;
    for (std::size_t i = 0; i < channels.size(); ++i)
        color |= static_cast<std::uint32_t>((sums[i] + count / 2) / count) << channels[i];
    return color;
}

/// The bitmap's colours with how often each occurs, in the order of their numbers.
Shades shadesOf(const Bitmap& bitmap) {
    std::vector<std::uint32_t> pixels = bitmap.pixels;
    std::sort(pixels.begin(), pixels.end());
    Shades shades;
    for (const std::uint32_t each : pixels) {
        if (shades.empty() || shades.back().color != each) shades.push_back({each, 0});
        ++shades.back().count;
    }
    return shades;
}

void substitute(Shades& shades, std::size_t most) {
    std::vector<Group> groups{{shades.begin(), shades.end()}};
    measure(groups.front());
    while (groups.size() < most) {
        const auto worst =
            std::max_element(groups.begin(), groups.end(),
                             [](const Group& left, const Group& right) { return left.error < right.error; });
        if (worst->error <= 0 || worst->end - worst->begin < 2) break;
        groups.push_back(split(*worst));
    }
    for (const Group& group : groups) {
        const std::uint32_t color = colorFor(group);
        for (auto each = group.begin; each != group.end; ++each) each->substitute = color;
    }
}

}  // namespace

Bitmap inFewerColors(const Bitmap& bitmap, std::size_t most) {
    Bitmap reduced = bitmap;
    if (bitmap.pixels.empty()) return reduced;
    Shades shades = shadesOf(bitmap);
    substitute(shades, most);
    std::sort(shades.begin(), shades.end(),
              [](const Shade& left, const Shade& right) { return left.color < right.color; });
    for (std::uint32_t& pixel : reduced.pixels) {
        pixel = std::lower_bound(shades.begin(), shades.end(), pixel,
                                 [](const Shade& shade, std::uint32_t color) { return shade.color < color; })
                    ->substitute;
    }
    return reduced;
}

}  // namespace vexa::frontend
