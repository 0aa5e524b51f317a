// The manual page, in the macros of man.

#include <sstream>
#include <string_view>

#include "apps/vexa/command_line.h"
#include "backend/platform/version.h"

namespace vexa::program {

namespace {

/// `text` for troff: nothing in it is a command, and hyphens stay what is typed.
std::string escaped(std::string_view text) {
    std::string page;
    bool atLineStart = true;
    for (const char c : text) {
        if (atLineStart && (c == '.' || c == '\'')) page += "\\&";
        atLineStart = c == '\n';
        if (c == '\\') {
            page += "\\e";
        } else if (c == '-') {
            page += "\\-";
        } else {
            page += c;
        }
    }
    return page;
}

std::string optionLine(const DescribedOption& option) {
    std::string line = ".TP\n\\fB" + escaped(option.name) + "\\fR";
    if (!option.value.empty()) line += " \\fI" + escaped(option.value) + "\\fR";
    return line + '\n' + escaped(option.help) + ".\n";
}

/// "vexa run [OPTIONS] FILE..."
std::string synopsis(const DescribedCommand& command) {
    std::string line = ".B vexa";
    line += command.name.empty() ? "" : " " + escaped(command.name);
    line += "\n[\\fIOPTIONS\\fR]";
    for (const DescribedOption& positional : command.positionals) {
        const std::string name = "\\fI" + escaped(positional.name) + "\\fR";
        line += positional.isRequired ? " " + name : " [" + name + "]";
    }
    return line + "\n.br\n";
}

/// What stands below the options in a help text, as it stands there.
std::string asItStands(const std::string& text) {
    return text.empty() ? "" : ".PP\n.nf\n" + escaped(text) + "\n.fi\n";
}

std::string sectionOf(const DescribedCommand& command) {
    std::string section = ".SS vexa " + escaped(command.name) + '\n' + escaped(command.help) + ".\n";
    for (const DescribedOption& positional : command.positionals) section += optionLine(positional);
    for (const DescribedOption& option : command.options) section += optionLine(option);
    return section + asItStands(command.more);
}

}  // namespace

std::string manualPage(const std::vector<DescribedCommand>& commands) {
    std::ostringstream page;
    const std::string version(productVersion());
    page << ".TH VEXA 1 \"\" \"vexa " << escaped(version) << "\" \"User Commands\"\n.SH NAME\n"
         << "vexa \\- make, restyle and export output documents by syntax\n.SH SYNOPSIS\n";
    for (const DescribedCommand& command : commands) page << synopsis(command);
    page << ".SH DESCRIPTION\n" << escaped(commands.front().help) << "\n.SH OPTIONS\n";
    for (const DescribedOption& positional : commands.front().positionals) page << optionLine(positional);
    for (const DescribedOption& option : commands.front().options) page << optionLine(option);
    page << ".SH COMMANDS\n";
    for (std::size_t i = 1; i < commands.size(); ++i) page << sectionOf(commands[i]);
    page
        << ".SH EXIT STATUS\n.TP\n0\nIt was done; there may be warnings.\n"
        << ".TP\n1\nA command reported an error, or a document or a file was refused.\n"
        << ".TP\n2\nWrong usage, or a file that cannot be read or written.\n"
        << ".SH ENVIRONMENT\n.TP\nLC_ALL, LC_MESSAGES, LANG, LANGUAGE\nThe language of messages and titles.\n"
        << ".TP\nNO_COLOR\nWhen it is set, nothing is colored.\n.SH EXAMPLES\n"
        << asItStands(commands.front().more).substr(4);
    return page.str();
}

}  // namespace vexa::program
