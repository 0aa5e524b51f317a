// The command OUTPUT EXPORT out of a file's name and a few keywords.
#pragma once

#include <string>
#include <vector>

#include "backend/syntax/descriptors.h"

namespace vexa::program {

struct ExportWish {
    std::string file;
    std::string as;                     ///< "report"; empty: what the file's extension says
    std::vector<std::string> keywords;  ///< "KEYWORD=VALUE"
};

struct ExportCommand {
    std::string text;     ///< the command; empty when there is none
    std::string problem;  ///< why there is none, as shown
};

/// `grammar` is that of OUTPUT EXPORT: a keyword goes to the format's subcommand if that knows it, else to
/// CONTENTS, else to the command itself. Values are quoted where the command needs it. Texts are UTF-8.
[[nodiscard]] ExportCommand exportCommand(const ExportWish& wish, const CommandDescriptor& grammar);

}  // namespace vexa::program
