// SELECT: the item types that a selection group is about, and their attributes in the request.
#pragma once

#include <string>

#include "backend/syntax/command_spec.h"
#include "backend/syntax/descriptors.h"
#include "backend/syntax/parser_message.h"

namespace vexa {

/// The description of SELECT.
[[nodiscard]] SubComDescriptor describeSelect();

/// Appends an attribute for each item type that `select` names; ALL stands for all of them.
void writeItemTypes(const SubComObj& select, std::string& request);

/// Appends what EXCEPT takes out again, if it was given, and reports its misuse. The result says whether the
/// command may go on. `failed`: the command has failed already; the list is then not read.
[[nodiscard]] bool writeExceptions(const SubComObj& select, bool failed, ParserMessage& messages,
                                   std::string& request);

}  // namespace vexa
