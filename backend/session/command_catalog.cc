#include "backend/session/command_catalog.h"

#include <algorithm>
#include <vector>

#include "backend/session/command_cutter.h"
#include "backend/syntax/nearest_keyword.h"
#include "backend/text/character_set.h"

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
    {"OUTPUT COMMENT", "OUTCOMNT", OwnCommand::none, "puts a comment into the output",
     "OUTPUT COMMENT TEXT='Figures of )DATE' BOLD=YES."},
    {"OUTPUT EXPORT", "OUTEXPORT", OwnCommand::none, "exports an output document to other formats",
     "OUTPUT EXPORT NAME=report\n  /PDF DOCUMENTFILE='report.pdf'."},
    {"OUTPUT MODIFY", "OUTMODIFY", OwnCommand::none, "changes items of an output document",
     "OUTPUT MODIFY NAME=report\n  /SELECT TABLES\n  /TABLE TRANSPOSE=YES."},
    {"STB PRINT", "STBPRINT", OwnCommand::none, "prints the keys and texts of string tables",
     "STB PRINT PROCEDURE='outmodify.xlf' LANGUAGE='de'."},
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

/// The first two words at a place; no name has more.
struct LeadingWords {
    LeadingWords(std::string_view text, std::size_t at)
        : first(wordAt(text, at)),
          firstEnd(at + first.size()),
          second(wordAt(text, skipBlanksAndComments(text, firstEnd))) {}

    std::string_view first;
    std::size_t firstEnd;
    std::string_view second;
};

/// True when the words spell `name`.
bool spellName(const LeadingWords& words, std::string_view name) {
    const std::size_t length = words.first.size();
    if (name.size() == length) {
        return spells(words.first, name);
    }
    return name.size() == length + 1 + words.second.size() && name[length] == ' ' &&
           spells(words.second, name.substr(length + 1)) && spells(words.first, name.substr(0, length));
}

/// The command whose second word `name` begins with, or null: "SAVE" for OUTPUT SAVE.
const KnownCommand* commandOfSecondWord(std::string_view name) {
    const std::string_view word = name.substr(0, name.find(' '));
    for (const KnownCommand& command : kCommands) {
        const std::size_t blank = command.name.find(' ');
        if (blank != std::string_view::npos && spells(word, command.name.substr(blank + 1))) return &command;
    }
    return nullptr;
}

}  // namespace

std::span<const KnownCommand> knownCommands() { return kCommands; }

const KnownCommand* findKnownCommand(std::string_view name) {
    const std::optional<FoundCommand> found = findCommandName(name, skipBlanksAndComments(name, 0));
    return found && skipBlanksAndComments(name, found->end) == name.size() ? found->command : nullptr;
}

std::optional<FoundCommand> findCommandName(std::string_view text, std::size_t offset) {
    const LeadingWords words(text, offset);
    const KnownCommand* longest = nullptr;
    for (const KnownCommand& command : kCommands) {
        if (spellName(words, command.name) &&
            (longest == nullptr || command.name.size() > longest->name.size())) {
            longest = &command;
        }
    }
    if (longest == nullptr) {
        return std::nullopt;
    }
    const bool oneWord = longest->name.size() == words.first.size();
    const std::size_t secondEnd =
        static_cast<std::size_t>(words.second.data() - text.data()) + words.second.size();
    return FoundCommand{longest, oneWord ? words.firstEnd : secondEnd};
}

std::string unknownCommandName(std::string_view text, std::size_t offset) {
    const std::string_view first = wordAt(text, offset);
    if (first.empty()) {
        const std::size_t length =
            currentCharacterSet().characterLength(text.data() + offset, text.size() - offset);
        return std::string(text.substr(offset, length));
    }
    std::string name(first.substr(0, kLongestShownWord));
    const std::size_t at = skipBlanksAndComments(text, offset + first.size());
    const std::string_view second = wordAt(text, at);
    const std::size_t behind = skipBlanksAndComments(text, at + second.size());
    // What "=" follows is a keyword.
    if (!second.empty() && (behind >= text.size() || text[behind] != '=')) {
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
    return nearest.empty() ? commandOfSecondWord(name) : findKnownCommand(nearest);
}

}  // namespace vexa
