#include "frontend/export/word/word_content.h"

#include <algorithm>

#include "backend/text/utf8.h"

namespace vexa::frontend {

namespace {

bool isLetter(char32_t code) {
    return (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z') || code >= 0xC0;
}

bool isOfRightToLeft(char32_t code) {
    return (code >= 0x590 && code < 0x900) || (code >= 0xFB1D && code < 0xFE00) ||
           (code >= 0xFE70 && code < 0xFEFF) || (code >= 0x10800 && code < 0x11000);
}

}  // namespace

bool isRightToLeft(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        const Utf8Character character = decodeUtf8(text.substr(i));
        if (isOfRightToLeft(character.code)) return true;
        if (isLetter(character.code)) return false;
        i += character.length;
    }
    return false;
}

bool isRightToLeft(const WordParagraph& paragraph) {
    return std::any_of(paragraph.runs.begin(), paragraph.runs.end(),
                       [](const WordRun& run) { return isRightToLeft(run.text); });
}

std::string bookmarkName(std::size_t bookmark) { return "_Toc" + std::to_string(100'000'000 + bookmark); }

}  // namespace vexa::frontend
