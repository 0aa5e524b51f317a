// What is said of a command line that cannot be read.
#pragma once

#include <string>

namespace CLI {
class App;
class ParseError;
}  // namespace CLI

namespace vexa::program {

/// What is wrong, what would fit, and the nearest to what was typed. `app` has read as far as it could.
[[nodiscard]] std::string usageComplaint(const CLI::App& app, const CLI::ParseError& error);

/// Why `word` can be no syntax file: neither a command of the program, whose name it may nearly be, nor a
/// file. Empty for a file, and for what is named as one.
[[nodiscard]] std::string objectionToFile(const CLI::App& app, const std::string& word);

/// Writes a complaint of the usage to standard error.
void complainOfUsage(const std::string& complaint);

}  // namespace vexa::program
