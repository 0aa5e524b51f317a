// Small parts of packages as trees: read, changed in places, and written again with everything that nobody
// knew.
#pragma once

#include <cstddef>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "frontend/package/xml_reader.h"

namespace vexa::frontend {

/// The namespace of workbooks, and the one that some call strict.
inline constexpr std::string_view spreadsheetSpace =
    "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
inline constexpr std::string_view strictSpreadsheetSpace = "http://purl.oclc.org/ooxml/spreadsheetml/main";

/// The most that a part may have that is read as a tree, bytes.
inline constexpr std::size_t mostOfATree = 96U << 20U;

/// One part. Elements are found by their names without prefixes; what is added has the prefix of the root.
class PackageXml {
  public:
    /// Refuses what is no XML, and a root element of another name (without its prefix).
    PackageResult parse(std::string xml, std::string_view root);
    [[nodiscard]] pugi::xml_node root() const { return reader_.root(); }
    /// The name of a new element: with the prefix of the root.
    [[nodiscard]] std::string named(std::string_view name) const;
    /// The namespace of the root.
    [[nodiscard]] std::string_view space() const;
    /// The whole part again.
    [[nodiscard]] std::string text() const;

  private:
    XmlReader reader_;
};

[[nodiscard]] std::string_view localName(const pugi::xml_node& node);
/// The first child element of that name, without its prefix; null where there is none.
[[nodiscard]] pugi::xml_node childOf(const pugi::xml_node& node, std::string_view name);
/// The next element of the same name beside it.
[[nodiscard]] pugi::xml_node nextOf(const pugi::xml_node& node);
/// The value of the attribute of that name with any prefix; empty without one.
[[nodiscard]] std::string_view attributeOf(const pugi::xml_node& node, std::string_view name);
/// Sets an attribute, or adds it.
void setAttribute(pugi::xml_node node, const char* name, std::string_view value);
/// The same text for equal elements, whatever prefix they have.
[[nodiscard]] std::string nodeText(const pugi::xml_node& node);
/// A number; `fallback` where the text is none.
[[nodiscard]] std::size_t numberOr(std::string_view text, std::size_t fallback);

}  // namespace vexa::frontend
