#include "frontend/import/import_problem.h"

#include <algorithm>

namespace vexa::frontend {

TextPlace placeOf(std::string_view text, std::size_t offset) {
    const std::string_view before = text.substr(0, std::min(offset, text.size()));
    const std::size_t lineEnd = before.rfind('\n');
    const std::string_view line = before.substr(lineEnd == std::string_view::npos ? 0 : lineEnd + 1);
    const auto isNoTrail = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; };
    TextPlace place;
    place.line = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1;
    place.column = static_cast<std::size_t>(std::count_if(line.begin(), line.end(), isNoTrail)) + 1;
    return place;
}

std::string ImportProblem::shown() const {
    std::string text = file;
    if (place.line != 0) {
        text += (text.empty() ? "" : ":") + std::to_string(place.line) + ':' + std::to_string(place.column);
    }
    if (!path.empty()) text += ": " + path;
    return text.empty() ? message : text + ": " + message;
}

std::string mismatch(const std::string& found, std::string_view expected) {
    return composed("Found: ^1. Expected: ^2."_text, {found, translated(expected)});
}

std::string otherNumberOfFields(std::size_t found, std::size_t inFirstRow) {
    return composed("Fields found: ^1. Fields in the first row: ^2."_text,
                    {std::to_string(found), std::to_string(inFirstRow)});
}

}  // namespace vexa::frontend
