#include "backend/session/command_catalog.h"

#include <algorithm>
#include <vector>

#include "backend/platform/character_set.h"
#include "backend/session/command_cutter.h"
#include "backend/syntax/nearest_keyword.h"

namespace vexa {

namespace {

constexpr KnownCommand kCommands[] = {
    {"OUTPUT NEW", "OUTNEW", OwnCommand::none, "makes a new output document", "OUTPUT NEW NAME=report."},
    {"OUTPUT OPEN", "OUTOPEN", OwnCommand::none, "opens a saved output document",
     "OUTPUT OPEN FILE='report.vxv' NAME=report."},
    {"OUTPUT SAVE", "OUTSAVE", OwnCommand::none, "saves an output document to a file",
     "OUTPUT SAVE OUTFILE='report.vxv' NAME=report."},
    {"OUTPUT CLOSE", "OUTCLOSE", OwnCommand::none, "closes one open output document, or all",
     "OUTPUT CLOSE NAME=report."},
    {"OUTPUT ACTIVATE", "OUTACTIV8", OwnCommand::none, "makes an open output document the active one",
     "OUTPUT ACTIVATE NAME=report."},
    {"OUTPUT DISPLAY", "OUTDISP", OwnCommand::none, "lists the open output documents", "OUTPUT DISPLAY."},
    {"OUTPUT NAME", "OUTNAME", OwnCommand::none, "names the active output document", "OUTPUT NAME report."},
    {"OUTPUT COMMENT", "OUTCOMNT", OwnCommand::none, "puts a comment into the output", ""},
    {"OUTPUT EXPORT", "OUTEXPORT", OwnCommand::none, "exports an output document to other formats", ""},
    {"OUTPUT MODIFY", "OUTMODIFY", OwnCommand::none, "changes items of an output document", ""},
    {"STB PRINT", "STBPRINT", OwnCommand::none, "prints the keys and texts of string tables", ""},
    {"FILE HANDLE", nullptr, OwnCommand::fileHandle, "gives a folder or a file a short name",
     "FILE HANDLE data /NAME='c:\\project\\data'."},
    {"CD", nullptr, OwnCommand::changeFolder, "sets the folder that file names are taken from",
     "CD 'c:\\project'."},
    {"INSERT", nullptr, OwnCommand::insert, "runs the commands of another syntax file",
     "INSERT FILE='more.vxs'."},
    {"ECHO", nullptr, OwnCommand::echo, "prints a text", "ECHO 'Saving the report'."},
};

constexpr std::size_t kLongestShownWord = 40;

bool isWordByte(char c) {
    const auto byte = static_cast<unsigned char>(c);
    const bool letter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
    return letter || (byte >= '0' && byte <= '9') || byte > 127 || c == '_' || c == '.' || c == '@' ||
           c == '#' || c == '$';
}

std::string_view wordAt(std::string_view text, std::size_t at) {
    std::size_t end = at;
    while (end < text.size() && isWordByte(text[end])) {
        ++end;
    }
    return text.substr(at, end - at);
}

/// `capitals` is ASCII; so is what equals it.
bool spells(std::string_view word, std::string_view capitals) {
    const auto same = [](char c, char capital) {
        return c == capital || (capital >= 'A' && c == (capital | 0x20));
    };
    return word.size() == capitals.size() && std::equal(word.begin(), word.end(), capitals.begin(), same);
}

/// Offset behind the words of `name` when they stand at `at`.
std::optional<std::size_t> matchName(std::string_view text, std::size_t at, std::string_view name) {
    while (!name.empty()) {
        const std::size_t length = std::min(name.find(' '), name.size());
        const std::string_view word = wordAt(text, at);
        if (!spells(word, name.substr(0, length))) {
            return std::nullopt;
        }
        at += word.size();
        name.remove_prefix(std::min(length + 1, name.size()));
        if (!name.empty()) {
            at = skipBlanksAndComments(text, at);
        }
    }
    return at;
}

}  // namespace

std::span<const KnownCommand> knownCommands() { return kCommands; }

const KnownCommand* findKnownCommand(std::string_view name) {
    const std::optional<FoundCommand> found = findCommandName(name, skipBlanksAndComments(name, 0));
    return found && skipBlanksAndComments(name, found->end) == name.size() ? found->command : nullptr;
}

std::optional<FoundCommand> findCommandName(std::string_view text, std::size_t offset) {
    std::optional<FoundCommand> longest;
    for (const KnownCommand& command : kCommands) {
        const std::optional<std::size_t> end = matchName(text, offset, command.name);
        if (end && (!longest || command.name.size() > longest->command->name.size())) {
            longest = FoundCommand{&command, *end};
        }
    }
    return longest;
}

std::string unknownCommandName(std::string_view text, std::size_t offset) {
    const std::string_view first = wordAt(text, offset);
    if (first.empty()) {
        const std::size_t length =
            currentCharacterSet().characterLength(text.data() + offset, text.size() - offset);
        return std::string(text.substr(offset, length));
    }
    std::string name(first.substr(0, kLongestShownWord));
    const std::string_view second = wordAt(text, skipBlanksAndComments(text, offset + first.size()));
    if (!second.empty()) {
        name += ' ';
        name += second.substr(0, kLongestShownWord);
    }
    return name;
}

const KnownCommand* nearestCommand(std::string_view name) {
    std::vector<std::string_view> names;
    for (const KnownCommand& command : kCommands) {
        names.push_back(command.name);
    }
    std::string_view nearest = nearestKeyword(name, names);
    if (nearest.empty()) {
        // The second word may be what a command of one word takes.
        nearest = nearestKeyword(name.substr(0, name.find(' ')), names);
    }
    return nearest.empty() ? nullptr : findKnownCommand(nearest);
}

}  // namespace vexa
