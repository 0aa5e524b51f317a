// Judges XML by the schemas of the repository.
#pragma once

#include <string>
#include <string_view>

namespace vexa::testing {

enum class Schema { exportSpecification, exportResponse };

/// Empty when `xml` (UTF-8) is well-formed and the schema allows it, else the complaints, one a line.
std::string complaintsAbout(std::string_view xml, Schema schema);

/// The value of `attribute` in the first element of an export specification that has one, as a reader of XML
/// gets it, in UTF-8. "(none)" when there is no such attribute.
std::string attributeIn(std::string_view xml, std::string_view attribute);

}  // namespace vexa::testing
