#include "backend/pivot/rendering/footnotes.h"

namespace vexa::rendering {

std::string footnoteLetters(std::size_t number) {
    constexpr std::size_t letters = 26;
    std::string text(1, static_cast<char>('a' + number % letters));
    while (number >= letters) {
        number = number / letters - 1;
        text.insert(text.begin(), static_cast<char>('a' + number % letters));
    }
    return text;
}

std::string Footnotes::markerOf(const std::vector<std::string>& notes) {
    std::string marker;
    for (const std::string& note : notes) {
        const auto [found, added] = numbers_.try_emplace(note, notes_.size());
        if (added) notes_.push_back(note);
        marker += marker.empty() ? " [" : ",";
        marker += footnoteLetters(found->second);
    }
    if (!marker.empty()) marker += ']';
    return marker;
}

}  // namespace vexa::rendering
