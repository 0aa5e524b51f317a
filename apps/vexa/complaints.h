// What the program itself complains of, on standard error and in its own name.
#pragma once

#include <string>
#include <vector>

#include "apps/vexa/diagnostics.h"
#include "backend/text/system_text.h"

namespace vexa::program {

/// An error whose text is as shown.
void complain(const std::string& message);
/// An error about `file`, which may be empty; the markers of `text` are replaced by the arguments.
void complain(SystemText text, const std::vector<std::string>& arguments, const std::string& file = {});
/// The same as a warning.
void warn(SystemText text, const std::vector<std::string>& arguments, const std::string& file = {});
/// What `diagnostic` says to programs, and `sentence` to people; without one its text.
void complain(Diagnostic diagnostic, const std::string& sentence = {});

}  // namespace vexa::program
