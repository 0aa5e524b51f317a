// What the command line takes, as data: what the manual page and the completions of shells are made of.
#pragma once

#include <string>
#include <vector>

namespace vexa::program {

struct DescribedOption {
    std::string name;   ///< "--trace"; of a positional "FILE"
    std::string value;  ///< "FILE", "yes|no"; empty for a flag
    std::string help;
    bool isRequired = false;
};

struct DescribedCommand {
    std::string name;  ///< "run"; empty for the program itself
    std::string help;
    std::string more;  ///< exit status and examples, as `--help` shows them
    std::vector<DescribedOption> options;
    std::vector<DescribedOption> positionals;
};

/// The program, then its commands in their order; from the same descriptions that read the command line.
[[nodiscard]] std::vector<DescribedCommand> describedCommandLine();

/// The source of the manual page vexa(1), for man.
[[nodiscard]] std::string manualPage(const std::vector<DescribedCommand>& commands);

/// A script that completes the words of `vexa` for a shell: bash, zsh or fish; empty for any other.
[[nodiscard]] std::string completionScript(const std::string& shell,
                                           const std::vector<DescribedCommand>& commands);

}  // namespace vexa::program
