// Reads XML into a tree, within limits, and the values of its attributes.
#pragma once

#include <cstdint>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "frontend/package/package_result.h"
#include "frontend/package/xml_check.h"

namespace vexa::frontend {

/// One parsed text. The text is taken over and parsed in place. No entity but those of XML itself is ever
/// resolved, and nothing is fetched.
class XmlReader {
  public:
    /// Refuses what `checkXml` refuses. An empty `root` takes a root element of any name.
    PackageResult parse(std::string xml, std::string_view root, const XmlLimits& limits = {},
                        const XmlPolicy& policy = {});
    [[nodiscard]] pugi::xml_node root() const { return document_.document_element(); }
    /// What the text held.
    [[nodiscard]] const XmlSize& size() const { return size_; }

  private:
    std::string buffer_;
    pugi::xml_document document_;
    XmlSize size_;
};

/// The following answer false when a value is there but cannot be read; a value that is missing leaves
/// `value` alone. Texts are decoded as `XmlEscapes::backslashes` writes them.
[[nodiscard]] bool readText(const pugi::xml_node& node, const char* attribute, std::string& value);
[[nodiscard]] bool readInteger(const pugi::xml_node& node, const char* attribute, int& value);
[[nodiscard]] bool readInteger(const pugi::xml_node& node, const char* attribute, std::optional<int>& value);
[[nodiscard]] bool readInteger(const pugi::xml_node& node, const char* attribute, std::uint64_t& value);
[[nodiscard]] bool readNumber(const pugi::xml_node& node, const char* attribute,
                              std::optional<double>& value);
/// The text of an element that holds nothing else, decoded in the same way.
[[nodiscard]] bool readContent(const pugi::xml_node& node, std::string& value);

}  // namespace vexa::frontend
