#include "backend/tokens/command_text.h"

#include <algorithm>
#include <string_view>

#include "backend/text/character_set.h"

namespace vexa {

namespace {

const CommandText* installedCommand = nullptr;

/// Characters of `text`, which is in the back end's character set.
int countCharacters(std::string_view text) {
    const CharacterSet& set = currentCharacterSet();
    int count = 0;
    for (std::size_t at = 0; at < text.size(); ++count) {
        at += std::max<std::size_t>(1, set.characterLength(text.data() + at, text.size() - at));
    }
    return count;
}

}  // namespace

SourcePlace placeOf(const CommandText& command, std::size_t offset) {
    const std::string_view text = command.text;
    offset = std::min(offset, text.size());
    const std::string_view before = text.substr(0, offset);
    const std::size_t lastEnd = before.rfind('\n');
    const std::size_t lineStart = lastEnd == std::string_view::npos ? 0 : lastEnd + 1;
    std::size_t lineEnd = std::min(text.find('\n', lineStart), text.size());
    const std::string_view lineRest = lineEnd == text.size() ? std::string_view(command.lineRest) : "";
    if (lineEnd > lineStart && text[lineEnd - 1] == '\r') {
        --lineEnd;
    }
    SourcePlace place;
    place.file = command.file;
    place.line = command.line + static_cast<int>(std::count(before.begin(), before.end(), '\n'));
    place.column = countCharacters(text.substr(lineStart, offset - lineStart)) + 1;
    place.sourceLine = toUtf8(std::string(text.substr(lineStart, lineEnd - lineStart)).append(lineRest));
    return place;
}

const CommandText* currentCommand() { return installedCommand; }

CurrentCommandScope::CurrentCommandScope(const CommandText& command) : outer_(installedCommand) {
    installedCommand = &command;
}

CurrentCommandScope::~CurrentCommandScope() { installedCommand = outer_; }

}  // namespace vexa
