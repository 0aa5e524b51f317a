// Where the installation's own files stand: string tables and looks.
#pragma once

#include <string>
#include <vector>

#include "apps/vexa/options.h"

namespace vexa::program {

/// Says to the path service and to the dictionary of shown texts which folder and language `choices` name;
/// without a language there, the one that the system's settings name. A language that has no folder there
/// gives way to English. False when the choices cannot be followed; `problem` then says what and what to do,
/// and nothing has changed. `warnings` gets what the user does not get of what was asked for.
[[nodiscard]] bool openInstallation(const SessionChoices& choices, std::vector<std::string>& warnings,
                                    std::string& problem);

/// The code of the language that the installation's folder of texts is named after, as pages say it: "pt-BR".
[[nodiscard]] std::string languageCode();

}  // namespace vexa::program
