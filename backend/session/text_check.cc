#include "backend/session/text_check.h"

#include <algorithm>
#include <array>

#include "backend/session/command_cutter.h"
#include "backend/text/character_set.h"

namespace vexa {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 128; });
}

bool isBroken(std::string_view line) {
    if (isAscii(line)) return false;
    const std::string converted = toUtf8(line);
    return currentCharacterSet().isUtf8() ? converted != line
                                          : converted.find(kReplacement) != std::string::npos;
}

/// Gives each place of `text` (UTF-8) that is in no quotes and no comment to `visit`, until that says true.
template <typename Visit>
void visitPlain(std::string_view text, Visit visit) {
    char quote = '\0';
    for (std::size_t at = 0; at < text.size(); ++at) {
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

struct KnownMark {
    std::string_view bytes;
    std::string_view blank;  ///< the code of a blank; empty for a quote
};

constexpr std::array<KnownMark, 12> kMarks{{{"\u00A0", "U+00A0"},
                                            {"\u2007", "U+2007"},
                                            {"\u2009", "U+2009"},
                                            {"\u202F", "U+202F"},
                                            {"\u3000", "U+3000"},
                                            {"\u2018", ""},
                                            {"\u2019", ""},
                                            {"\u201A", ""},
                                            {"\u201C", ""},
                                            {"\u201D", ""},
                                            {"\u201E", ""},
                                            {"\u00BB", ""}}};

}  // namespace

bool looksLikeUtf16(std::string_view text) {
    if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF")) return true;
    constexpr std::size_t kEnough = 256;
    const std::string_view beginning = text.substr(0, kEnough);
    const auto zeros = static_cast<std::size_t>(std::count(beginning.begin(), beginning.end(), '\0'));
    return zeros > 0 && zeros >= beginning.size() / 3;
}

int firstBrokenLine(std::string_view text) {
    if (isAscii(text)) return 0;
    int number = 1;
    for (std::size_t at = 0; at < text.size(); ++number) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        if (isBroken(text.substr(at, end - at))) return number;
        at = end + 1;
    }
    return 0;
}

std::optional<StrangeMark> findStrangeMark(const CommandText& command) {
    if (isAscii(command.text)) return std::nullopt;
    const std::string text = toUtf8(command.text);
    std::optional<StrangeMark> found;
    visitPlain(text, [&](std::size_t at) {
        const std::string_view rest = std::string_view(text).substr(at);
        const auto* const mark = std::find_if(kMarks.begin(), kMarks.end(), [&](const KnownMark& each) {
            return rest.starts_with(each.bytes);
        });
        if (mark == kMarks.end()) return false;
        const std::string_view before = std::string_view(text).substr(0, at);
        const int line = command.line + static_cast<int>(std::count(before.begin(), before.end(), '\n'));
        found = mark->blank.empty() ? StrangeMark{StrangeMark::Kind::quote, std::string(mark->bytes), line}
                                    : StrangeMark{StrangeMark::Kind::blank, std::string(mark->blank), line};
        return true;
    });
    return found;
}

const KnownCommand* commandBehindPeriod(const CommandText& command, bool oneWord) {
    const std::string_view text = command.text;
    const KnownCommand* found = nullptr;
    visitPlain(text, [&](std::size_t at) {
        if (text[at] != '.' || at + 1 >= text.size() || (text[at + 1] != ' ' && text[at + 1] != '\t')) {
            return false;
        }
        const std::size_t next = std::min(text.find_first_not_of(" \t", at + 1), text.size());
        const std::optional<FoundCommand> name = findCommandName(text, next);
        if (name && (oneWord || name->command->name.find(' ') != std::string_view::npos)) {
            found = name->command;
        }
        return found != nullptr;
    });
    return found;
}

}  // namespace vexa
