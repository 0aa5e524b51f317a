// Completions of shells: of commands, options, the words that an option takes, and files.

#include <algorithm>
#include <sstream>
#include <string_view>

#include "apps/vexa/command_line.h"

namespace vexa::program {

namespace {

/// "yes no" out of "yes|no"; nothing for one word, which stands for many.
std::string wordsOf(const std::string& value) {
    if (value.find('|') == std::string::npos) return {};
    std::string words = value;
    std::replace(words.begin(), words.end(), '|', ' ');
    return words;
}

bool isFile(const std::string& value) {
    return value.find("FILE") != std::string::npos || value == "FOLDER" || value == "DOCUMENT";
}

/// Inside single quotes of any of the shells.
std::string inQuotes(std::string_view text) {
    std::string result;
    for (const char c : text) result += c == '\'' ? std::string("\"") : std::string(1, c);
    return result;
}

std::string namesOf(const std::vector<DescribedOption>& options) {
    std::string names;
    for (const DescribedOption& option : options) names += (names.empty() ? "" : " ") + option.name;
    return names;
}

std::string commandNames(const std::vector<DescribedCommand>& commands, const char* between) {
    std::string names;
    for (std::size_t i = 1; i < commands.size(); ++i) names += (i == 1 ? "" : between) + commands[i].name;
    return names;
}

std::string bashScript(const std::vector<DescribedCommand>& commands) {
    std::ostringstream script;
    script
        << "# Completions of vexa for bash, made from its options.\n"
           "_vexa() {\n"
           "    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} command= word\n"
           "    for word in \"${COMP_WORDS[@]:1:COMP_CWORD-1}\"; do\n"
           "        case $word in\n"
           "            "
        << commandNames(commands, "|")
        << ") command=$word; break ;;\n"
           "        esac\n"
           "    done\n"
           "    local words=\n"
           "    case $command:$previous in\n";
    for (const DescribedCommand& command : commands) {
        for (const DescribedOption& option : command.options) {
            if (option.value.empty()) continue;
            script << "        " << command.name << ':' << option.name << ") words='" << wordsOf(option.value)
                   << "'\n            COMPREPLY=($(compgen -W \"$words\" -- \"$current\")); return ;;\n";
        }
    }
    script << "    esac\n    case $command in\n";
    for (const DescribedCommand& command : commands) {
        script << "        '" << command.name << "') words='" << namesOf(command.options) << "' ;;\n";
    }
    // Without a reply the shell completes names of files.
    script << "    esac\n"
              "    [[ $current == -* ]] || words=\n"
              "    [[ $current == -* || -n $command ]] || words='"
           << commandNames(commands, " ")
           << "'\n"
              "    COMPREPLY=($(compgen -W \"$words\" -- \"$current\"))\n"
              "}\n"
              "complete -o bashdefault -o default -F _vexa vexa\n";
    return script.str();
}

/// "[help]:VALUE:_files" as _arguments takes it.
std::string zshOption(const DescribedOption& option) {
    std::string help;
    for (const char c : inQuotes(option.help))
        help += std::string(c == '[' || c == ']' || c == ':' ? "\\" : "") + c;
    std::string text = option.name + '[' + help + ']';
    if (option.value.empty()) return text;
    const std::string words = wordsOf(option.value);
    text += ':' + option.name.substr(2) + ':';
    if (!words.empty()) return text + '(' + words + ')';
    return text + (isFile(option.value) ? "_files" : " ");
}

std::string zshScript(const std::vector<DescribedCommand>& commands) {
    std::ostringstream script;
    script << "#compdef vexa\n# Completions of vexa for zsh, made from its options.\n"
              "_vexa() {\n"
              "    local -a commands=(\n";
    for (std::size_t i = 1; i < commands.size(); ++i) {
        script << "        '" << commands[i].name << ':' << inQuotes(commands[i].help) << "'\n";
    }
    script << "    )\n    local curcontext=$curcontext state line\n    _arguments -C \\\n";
    for (const DescribedOption& option : commands.front().options) {
        script << "        '" << zshOption(option) << "' \\\n";
    }
    script << "        '1: :->command' '*:: :->rest'\n"
              "    case $state in\n"
              "        command) _describe command commands; _files -g '*.vxs' ;;\n"
              "        rest)\n"
              "            case $words[1] in\n";
    for (std::size_t i = 1; i < commands.size(); ++i) {
        script << "                " << commands[i].name << ") _arguments";
        for (const DescribedOption& option : commands[i].options) {
            script << " \\\n                    '" << zshOption(option) << "'";
        }
        script << " \\\n                    '*:file:_files' ;;\n";
    }
    script << "                *) _files ;;\n            esac ;;\n    esac\n}\n"
              "if [[ $funcstack[1] == _vexa ]]; then _vexa \"$@\"; else compdef _vexa vexa; fi\n";
    return script.str();
}

std::string fishOption(const std::string& condition, const DescribedOption& option) {
    std::string line = "complete -c vexa -n '" + condition + "' -l " + option.name.substr(2);
    const std::string words = wordsOf(option.value);
    if (!words.empty()) {
        line += " -x -a '" + words + "'";
    } else if (!option.value.empty()) {
        line += isFile(option.value) ? " -r -F" : " -x";
    }
    return line + " -d '" + inQuotes(option.help) + "'\n";
}

std::string fishScript(const std::vector<DescribedCommand>& commands) {
    std::ostringstream script;
    const std::string none = "not __fish_seen_subcommand_from " + commandNames(commands, " ");
    script << "# Completions of vexa for fish, made from its options.\n";
    for (std::size_t i = 1; i < commands.size(); ++i) {
        script << "complete -c vexa -n '" << none << "' -a " << commands[i].name << " -d '"
               << inQuotes(commands[i].help) << "'\n";
    }
    for (const DescribedOption& option : commands.front().options) script << fishOption(none, option);
    for (std::size_t i = 1; i < commands.size(); ++i) {
        const std::string condition = "__fish_seen_subcommand_from " + commands[i].name;
        for (const DescribedOption& option : commands[i].options) script << fishOption(condition, option);
    }
    return script.str();
}

}  // namespace

std::string completionScript(const std::string& shell, const std::vector<DescribedCommand>& commands) {
    if (shell == "bash") return bashScript(commands);
    if (shell == "zsh") return zshScript(commands);
    return shell == "fish" ? fishScript(commands) : std::string();
}

}  // namespace vexa::program
