#include "backend/session/command_cutter.h"

#include <algorithm>
#include <utility>

namespace vexa {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::size_t skipBlanks(std::string_view text, std::size_t at) {
    while (at < text.size() && isBlank(text[at])) {
        ++at;
    }
    return at;
}

std::size_t trimmedLength(std::string_view line) {
    std::size_t length = line.size();
    while (length > 0 && isBlank(line[length - 1])) {
        --length;
    }
    return length;
}

/// Drops the lines that stand before the one that `offset` is on.
void dropLeadingLines(CommandText& command, std::size_t offset) {
    const std::string_view before = std::string_view(command.text).substr(0, offset);
    const std::size_t lastEnd = before.rfind('\n');
    const std::size_t lineStart = lastEnd == std::string_view::npos ? 0 : lastEnd + 1;
    command.line += static_cast<int>(std::count(before.begin(), before.end(), '\n'));
    command.text.erase(0, lineStart);
    command.arguments = offset - lineStart;
}

}  // namespace

bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

std::size_t skipBlanksAndComments(std::string_view text, std::size_t at) {
    for (;;) {
        at = skipBlanks(text, at);
        if (!text.substr(std::min(at, text.size())).starts_with("/*")) {
            return at;
        }
        const std::size_t end = text.find("*/", at + 2);
        if (end == std::string_view::npos) {
            return at;
        }
        at = end + 2;
    }
}

void CommandEndFinder::noteContent(char first) {
    if (!hasContent_) {
        hasContent_ = true;
        asteriskComment_ = first == '*';
    }
}

bool CommandEndFinder::opensComment(std::string_view line, std::size_t at, std::size_t lastClose) const {
    // An asterisk comment is plain text: a "/*" in it that its line does not close is nothing special.
    const bool closes = lastClose != std::string_view::npos && lastClose >= at + 2;
    return line.substr(at).starts_with("/*") && (closes || !asteriskComment_);
}

std::size_t CommandEndFinder::contentEnd(std::string_view line) {
    std::size_t end = 0;
    const std::size_t lastClose = line.rfind("*/");
    char quote = '\0';  // a literal ends with its line at the latest
    for (std::size_t at = 0; at < line.size();) {
        if (inComment_) {
            const std::size_t close = line.find("*/", at);
            inComment_ = close == std::string_view::npos;
            at = inComment_ ? line.size() : close + 2;
            continue;
        }
        const char c = line[at];
        if (quote == '\0' && opensComment(line, at, lastClose)) {
            inComment_ = true;
            at += 2;
            continue;
        }
        ++at;
        if (isBlank(c)) {
            continue;
        }
        noteContent(c);
        end = at;
        if (quote == c) {
            quote = '\0';
        } else if (quote == '\0' && (c == '\'' || c == '"') && !asteriskComment_) {
            quote = c;
        }
    }
    return end;
}

CommandEndFinder::Ending CommandEndFinder::addLine(std::string_view line) {
    const std::size_t trimmed = trimmedLength(line);
    if (trimmed == 0) {
        return Ending::blankLine;
    }
    std::size_t end = trimmed;
    if (inComment_ || line.find("/*") != std::string_view::npos) {
        end = contentEnd(line);
    } else {
        noteContent(line[skipBlanks(line, 0)]);
    }
    if (end == 0 || line[end - 1] != '.') {
        return Ending::none;
    }
    lengthBeforePeriod_ = end - 1;
    return Ending::period;
}

std::string withPlainLineEnds(std::string text) {
    if (text.starts_with(kByteOrderMark)) {
        text.erase(0, kByteOrderMark.size());
    }
    const std::size_t first = text.find('\r');
    if (first == std::string::npos) {
        return text;
    }
    std::size_t to = first;
    for (std::size_t from = first; from < text.size(); ++from) {
        if (text[from] != '\r') {
            text[to++] = text[from];
        } else if (from + 1 == text.size() || text[from + 1] != '\n') {
            text[to++] = '\n';
        }
    }
    text.resize(to);
    return text;
}

CommandCutter::CommandCutter(std::string_view text, std::string_view file, int firstLine)
    : text_(text), file_(file), line_(firstLine) {}

bool CommandCutter::takeLine(std::string_view& line) {
    if (at_ >= text_.size()) {
        return false;
    }
    const std::size_t end = std::min(text_.find('\n', at_), text_.size());
    line = text_.substr(at_, end - at_);
    at_ = std::min(end + 1, text_.size());
    ++line_;
    return true;
}

bool CommandCutter::readCommand(CommandText& command) {
    CommandEndFinder finder;
    const std::size_t from = at_;
    command.line = line_;
    std::string_view line;
    std::size_t end = from;
    command.lineRest.clear();
    while (takeLine(line)) {
        const auto lineStart = static_cast<std::size_t>(line.data() - text_.data());
        const CommandEndFinder::Ending ending = finder.addLine(line);
        if (ending == CommandEndFinder::Ending::blankLine) {
            break;
        }
        if (ending == CommandEndFinder::Ending::period) {
            end = lineStart + finder.lengthBeforePeriod();
            command.lineRest = line.substr(finder.lengthBeforePeriod());
            break;
        }
        end = lineStart + line.size();
    }
    command.text.assign(text_.substr(from, end - from));
    return !finder.isAsteriskComment() && (finder.hasContent() || finder.inComment());
}

bool CommandCutter::next(CommandText& command) {
    while (at_ < text_.size()) {
        if (!readCommand(command)) {
            continue;
        }
        const std::size_t first = skipBlanksAndComments(command.text, 0);
        if (first < command.text.size()) {
            command.file = file_;
            dropLeadingLines(command, first);
            return true;
        }
    }
    return false;
}

}  // namespace vexa
