// What another implementation of the format reads from an archive and writes into one.
#pragma once

#include <map>
#include <string>

namespace vexa::frontend {

/// The entries of an archive by name, unpacked; a failure fails the test.
std::map<std::string, std::string> judgedContent(const std::string& archive);
/// An archive with these entries, deflated or stored.
std::string judgesArchive(const std::map<std::string, std::string>& entries, bool deflated = true);

}  // namespace vexa::frontend
