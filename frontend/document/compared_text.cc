#include "frontend/document/compared_text.h"

#include "backend/text/letters.h"
#include "backend/text/utf8.h"

namespace vexa::frontend {

std::string comparedText(std::string_view text) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    std::string folded;
    folded.reserve(text.size());
    while (!text.empty()) {
        const Utf8Character character = decodeUtf8(text);
        if (character.valid) {
            appendUtf8(folded, foldedLetter(character.code));
        } else {
            folded += text.front();
        }
        text.remove_prefix(character.length);
    }
    return folded;
}

}  // namespace vexa::frontend
