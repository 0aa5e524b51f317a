// What the program does, one function for each of its commands. Each answers what the program ends with.
#pragma once

#include <string>

#include "apps/vexa/options.h"
#include "backend/session/session.h"

namespace vexa::program {

class Surroundings;

/// Runs or checks syntax files.
[[nodiscard]] int runFiles(const Options& options);
/// Runs the commands that a user types at a prompt; without a terminal, those of standard input.
[[nodiscard]] int runPrompt(const Options& options);
/// Lists the commands, or shows the syntax of one or of a part of it.
[[nodiscard]] int showHelp(const Options& options);
/// The same inside a session; `words` are separated by one blank.
int explain(const std::string& words, Session& session);
/// Asks for a password and prints its encrypted form.
[[nodiscard]] int printEncryptedPassword();

/// Puts files into a document.
[[nodiscard]] int importFiles(const Options& options);
/// Prints a document's outline, one item of it, or all of it as JSON.
[[nodiscard]] int showDocument(const Options& options);

/// Exports a document file.
[[nodiscard]] int exportFile(const Options& options);

/// What the program ends with when an action ended with `status`: says so when standard output did not take
/// all. A reader that has seen enough is no failure that a program which only shows something complains of.
[[nodiscard]] int statusWithOutput(int status, bool onlyShows);

/// Warns of documents whose changes end with the program.
void warnOfUnsaved(Surroundings& surroundings);

}  // namespace vexa::program
