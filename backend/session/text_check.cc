#include "backend/session/text_check.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "backend/pivot/output_log.h"
#include "backend/session/session_messages.h"
#include "backend/strings/dictionary.h"
#include "backend/text/character_set.h"
#include "backend/text/text_encoding.h"
#include "backend/text/utf8.h"

namespace vexa {

namespace {

bool isAscii(std::string_view text) { return asciiPrefix(text) == text.size(); }

/// Bytes of the character at `at`.
std::size_t characterBytes(std::string_view text, std::size_t at) {
    if (static_cast<unsigned char>(text[at]) < 128) return 1;
    return std::max<std::size_t>(1, currentCharacterSet().characterLength(&text[at], text.size() - at));
}

/// Gives the offset of each character of `text` that is in no quotes and no comment to `visit`, until that
/// says true.
template <typename Visit>
void visitPlain(std::string_view text, Visit visit) {
    char quote = '\0';
    for (std::size_t at = 0; at < text.size(); at += characterBytes(text, at)) {
        const char c = text[at];
        if (quote != '\0') {
            if (c == quote || c == '\n') quote = '\0';
        } else if (c == '\'' || c == '"') {
            quote = c;
        } else if (text.substr(at).starts_with("/*")) {
            const std::size_t end = text.find("*/", at + 2);
            if (end == std::string_view::npos) return;
            at = end + 1;
        } else if (visit(at)) {
            return;
        }
    }
}

/// The place of the byte at `offset` of a file's bytes, whose lines end as they came.
SourcePlace placeInFile(std::string_view bytes, std::size_t offset, std::string_view file) {
    const std::string_view before = bytes.substr(0, offset);
    SourcePlace place;
    place.file = file;
    place.line = 1;
    std::size_t lineStart = 0;
    for (std::size_t at = before.find_first_of("\r\n"); at != std::string_view::npos;
         at = before.find_first_of("\r\n", at + 1)) {
        if (bytes[at] == '\r' && at + 1 < bytes.size() && bytes[at + 1] == '\n') continue;
        ++place.line;
        lineStart = at + 1;
    }
    const std::string_view line = bytes.substr(lineStart, bytes.find_first_of("\r\n", offset) - lineStart);
    place.column = 1;
    for (std::size_t at = 0; at < offset - lineStart; at += characterBytes(line, at)) ++place.column;
    place.sourceLine = toUtf8(line);
    return place;
}

std::string nameAndCode(const LookAlike& lookAlike) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string shown = "U+";
    for (unsigned shift = 16; shift > 0; shift -= 4) {
        shown += kDigits[(lookAlike.code >> (shift - 4)) & 15U];
    }
    return shown.append(" ").append(lookAlike.name);
}

SystemText objectionTo(const LookAlike& lookAlike) {
    if (lookAlike.plain.empty()) return "^1 is a character that is not seen. Delete it."_text;
    if (lookAlike.plain == " ") {
        return "^1 is a blank of another kind. Type a plain blank in its place."_text;
    }
    if (lookAlike.plain == "'" || lookAlike.plain == "\"") {
        return "^1 is a quotation mark of another kind. Type ^2 in its place: texts stand between plain ones."_text;
    }
    return "^1 looks like a sign of the command language and is another one. Type ^2 in its place."_text;
}

/// Where something else than blanks and comments stands, from `at` on; the end where nothing does.
std::size_t behindBlanksAndComments(std::string_view text, std::size_t at) {
    for (;;) {
        at = std::min(text.find_first_not_of(" \t", at), text.size());
        if (!text.substr(at).starts_with("/*")) return at;
        const std::size_t end = text.find("*/", at + 2);
        at = end == std::string_view::npos ? text.size() : end + 2;
    }
}

}  // namespace

FileResult checkSyntaxText(std::string_view bytes, std::string_view file) {
    constexpr std::string_view kArchive("PK\x03\x04");
    const auto refusal = [&file](SystemText text, std::vector<std::string> more) {
        more.insert(more.begin(), std::string(file));
        return FileResult{false, std::string(text), std::move(more)};
    };
    if (const std::optional<WideEncoding> wide = findWideEncoding(bytes)) {
        const std::string name(wide->name);
        if (wide->mark.empty()) {
            return refusal(
                "The file ^1 is ^2 text (a zero byte at offset ^3), which no --charset reads. Save it as UTF-8, or convert it: iconv -f ^2 -t UTF-8"_text,
                {name, std::to_string(wide->offset)});
        }
        return refusal(
            "The file ^1 is ^2 text (its first bytes are ^3), which no --charset reads. Save it as UTF-8, or convert it: iconv -f ^2 -t UTF-8"_text,
            {name, std::string(wide->mark)});
    }
    if (bytes.starts_with(kArchive)) {
        return refusal(
            "The file ^1 is no syntax file but an archive, as documents are. What a document holds is shown by: vexa show DOCUMENT"_text,
            {});
    }
    return {};
}

void warnOfCharacterSet(std::string_view bytes, std::string_view file, std::string_view language) {
    if (isAscii(bytes)) return;
    const CharacterSet& set = currentCharacterSet();
    const bool isUtf8 = !set.isUtf8() && isSurelyUtf8(bytes, set);
    const std::size_t bad = firstUnreadable(bytes, set);
    const bool isRead = bad == std::string_view::npos;
    if (isUtf8) {
        reportAt(placeInFile(bytes, isRead ? asciiPrefix(bytes) : bad, file), kWarningLevel,
                 "This file is UTF-8 and is read as ^1. Leave --charset out."_text, {set.name()});
    } else if (!isRead && isMostlyReadable(bytes, set)) {
        reportAt(
            placeInFile(bytes, bad, file), kWarningLevel,
            "The byte ^1 (at offset ^2 of the file) is no character in ^3, though what surrounds it is. The file was damaged here: type it anew."_text,
            {hexadecimalByte(bytes[bad]), std::to_string(bad), set.name()});
    } else if (!isRead) {
        reportAt(
            placeInFile(bytes, bad, file), kWarningLevel,
            "The byte ^1 (at offset ^2 of the file) is no character in ^3. Give the character set that the file has, which is probably ^4: --charset ^4. Or save it as UTF-8."_text,
            {hexadecimalByte(bytes[bad]), std::to_string(bad), set.name(),
             likelyCharacterSet(bytes, language)});
    }
}

std::optional<StrangeMark> findStrangeMark(const CommandText& command) {
    const std::string_view text = command.text;
    if (isAscii(text)) return std::nullopt;
    std::optional<StrangeMark> found;
    visitPlain(text, [&](std::size_t at) {
        const std::size_t length = characterBytes(text, at);
        if (static_cast<unsigned char>(text[at]) < 128) return false;
        const std::string character = toUtf8(text.substr(at, length));
        const LookAlike* const lookAlike = findLookAlike(decodeUtf8(character).code);
        if (lookAlike != nullptr) found = StrangeMark{lookAlike, at, length};
        return lookAlike != nullptr;
    });
    return found;
}

void reportStrangeMark(const CommandText& command, const StrangeMark& mark, bool isError) {
    const SystemText objection = objectionTo(*mark.lookAlike);
    std::vector<std::string> arguments{nameAndCode(*mark.lookAlike)};
    if (!mark.lookAlike->plain.empty() && mark.lookAlike->plain != " ") {
        arguments.emplace_back(mark.lookAlike->plain);
    }
    if (isError) {
        reportSyntaxError(command, mark.offset, composed(objection, arguments));
    } else {
        reportAt(placeOf(command, mark.offset), kWarningLevel, objection, arguments);
    }
}

std::optional<CommandBehindPeriod> findCommandBehindPeriod(const CommandText& command, bool oneWord) {
    const std::string_view text = command.text;
    std::optional<CommandBehindPeriod> found;
    visitPlain(text, [&](std::size_t at) {
        if (text[at] != '.') return false;
        const std::size_t next = behindBlanksAndComments(text, at + 1);
        if (next == at + 1) return false;
        const std::optional<FoundCommand> name = findCommandName(text, next);
        if (name && (oneWord || name->command->name.find(' ') != std::string_view::npos)) {
            found = CommandBehindPeriod{name->command, next};
        }
        return found.has_value();
    });
    return found;
}

}  // namespace vexa
