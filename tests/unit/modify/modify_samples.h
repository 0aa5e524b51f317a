// What the tests of modifications share.
#pragma once

#include <string>
#include <variant>

#include "frontend/modify/modification.h"
#include "frontend/requests/modify_request_reader.h"

namespace vexa::frontend {

/// The request with these groups for the active document; one that is refused fails the test.
ModifyRequest requestOf(const std::string& groups);

/// What the groups do to an outline. Only the fonts "Serif Sample" and "Sans Sample" are installed.
Modification modified(const Outline& outline, const std::string& groups);

/// The same with everything that is said of it, as the files of cases have it.
std::string described(const Outline& outline, const std::string& groups);

}  // namespace vexa::frontend
