#include <algorithm>
#include <string_view>

#include "frontend/drawing/bitmap.h"

namespace vexa::frontend {

namespace {

constexpr std::uint32_t headersLength = 14 + 40;
constexpr std::uint32_t dotsPerMetre = 3780;  // 96 an inch
constexpr std::uint32_t compressedByRuns = 1;
constexpr std::ptrdiff_t longestRun = 255;

void appendLittleEndian(std::string& bytes, std::uint32_t value, int length) {
    for (int i = 0; i < length; ++i)
        bytes += static_cast<char>(value >> (8U * static_cast<unsigned>(i)) & 0xFFU);
}

void appendColor(std::string& bytes, std::uint32_t pixel) {
    appendLittleEndian(bytes, pixel >> 8U, 3);  // blue, green, red
}

std::string plainRows(const Bitmap& bitmap) {
    std::string rows;
    for (int y = bitmap.height - 1; y >= 0; --y) {
        std::for_each(bitmap.row(y), bitmap.row(y) + bitmap.width,
                      [&rows](std::uint32_t pixel) { appendColor(rows, pixel); });
        rows.append((4 - rows.size() % 4) % 4, '\0');
    }
    return rows;
}

std::string rowsByRuns(const Bitmap& bitmap, const std::vector<std::uint32_t>& palette) {
    constexpr std::string_view endOfRow("\x00\x00", 2);
    constexpr std::string_view endOfBitmap("\x00\x01", 2);
    std::string rows;
    for (int y = bitmap.height - 1; y >= 0; --y) {
        const std::uint32_t* const end = bitmap.row(y) + bitmap.width;
        for (const std::uint32_t* each = bitmap.row(y); each != end;) {
            const std::uint32_t* const most = each + std::min(longestRun, end - each);
            const std::uint32_t* const behind =
                std::find_if(each, most, [each](std::uint32_t pixel) { return pixel != *each; });
            const auto color = std::lower_bound(palette.begin(), palette.end(), *each) - palette.begin();
            appendLittleEndian(rows, static_cast<std::uint32_t>(behind - each), 1);
            appendLittleEndian(rows, static_cast<std::uint32_t>(color), 1);
            each = behind;
        }
        rows += endOfRow;
    }
    return rows.replace(rows.size() - endOfRow.size(), endOfRow.size(), endOfBitmap);
}

}  // namespace

std::string bmpFile(const Bitmap& bitmap, bool compress) {
    const std::vector<std::uint32_t> palette =
        compress ? paletteOf(bitmap, 256) : std::vector<std::uint32_t>();
    const bool byRuns = !palette.empty();
    const std::string rows = byRuns ? rowsByRuns(bitmap, palette) : plainRows(bitmap);
    const auto colors = static_cast<std::uint32_t>(palette.size());
    const auto length = static_cast<std::uint32_t>(rows.size());
    std::string file = "BM";
    appendLittleEndian(file, headersLength + 4 * colors + length, 4);
    appendLittleEndian(file, 0, 4);
    appendLittleEndian(file, headersLength + 4 * colors, 4);
    appendLittleEndian(file, 40, 4);
    appendLittleEndian(file, static_cast<std::uint32_t>(bitmap.width), 4);
    appendLittleEndian(file, static_cast<std::uint32_t>(bitmap.height), 4);
    appendLittleEndian(file, 1, 2);  // planes
    appendLittleEndian(file, byRuns ? 8 : 24, 2);
    appendLittleEndian(file, byRuns ? compressedByRuns : 0, 4);
    appendLittleEndian(file, length, 4);
    appendLittleEndian(file, dotsPerMetre, 4);
    appendLittleEndian(file, dotsPerMetre, 4);
    appendLittleEndian(file, colors, 4);
    appendLittleEndian(file, colors, 4);
    for (const std::uint32_t each : palette) {
        appendColor(file, each);
        file += '\0';
    }
    return file + rows;
}

}  // namespace vexa::frontend
